// What the user is told of a tags file that was to be made.
#pragma once

#include <string>

namespace wren {

class ProgramOutput;
struct MadeTags;

// The sum, or the commands of a dry run, on the output; all else on standard error. 'toSee' is a command that shows
// what was tried. Answers whether all is well.
bool ReportTags(ProgramOutput& output, const MadeTags& made, const std::string& toSee);

} // namespace wren
