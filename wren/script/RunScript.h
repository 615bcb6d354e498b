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
    bool guarded = false; // runs command lines as the editor does, instead of in a plain shell
};

// Returns the exit status: 0 when every line was executed, 1 when one was not, 2 when the bundle cannot be used. Call
// it once in a process: standard output is standard error afterwards.
int RunScript(const ScriptOptions& options);

// Answers the lines on standard input; returns the exit status.
int AnswerLines(ScriptSession& session, ProgramOutput& answers);

} // namespace wren
