// The script face: lines on standard input, answers on standard output.
#pragma once

#include <string>

namespace wren {

class ProgramOutput;
class ScriptSession;

struct ScriptOptions {
    std::string bundle;   // "" for the default one
    std::string home;     // "" for the environment's
    std::string settings; // "" for none
    bool guarded = false; // runs command lines as the editor does, instead of by a shell as they are
};

// Answers the exit status: 0 when every line was carried out, 1 when one was not, 2 when the bundle cannot be used.
// Call it once in a process: standard output is standard error from then on.
int RunScript(const ScriptOptions& options);

// The lines on standard input, answered: the exit status.
int AnswerLines(ScriptSession& session, ProgramOutput& answers);

} // namespace wren
