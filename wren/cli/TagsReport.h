// The user's report about a tags file.
#pragma once

#include <string>

namespace wren {

class ProgramOutput;
struct MadeTags;

// Prints the summary, or the commands of a dry run, to the output; everything else to standard error. 'toSee' is a
// command that prints the commands to run. Returns whether the file was made.
bool ReportTags(ProgramOutput& output, const MadeTags& made, const std::string& toSee);

} // namespace wren
