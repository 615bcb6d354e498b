#include "wren/cli/TagsReport.h"

#include "wren/cli/CommandSupport.h"
#include "wren/cli/MakeTags.h"

#include <cstdio>

namespace wren {

namespace {

using Outcome = MadeTags::Outcome;

constexpr const char* kWhatWasDone = "what was done";

std::string Counted(long number, const char* noun)
{
    return std::to_string(number) + " " + noun + (number == 1 ? "" : "s");
}

std::string Summary(const MadeTags& made)
{
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%.1f s", made.seconds);
    return "tags of " + Counted(made.count.files, "file") + ": " + Counted(made.count.tags, "tag") + " in " + seconds +
           ", " + made.file + "\n";
}

// The status of the command that ended it all, in words.
std::string WhatFailed(const MadeTags& made)
{
    for (const ShellCommands::Command& command : made.commands)
        if (command.status && *command.status != 0)
            return "a command ended with status " + std::to_string(*command.status) + "; its own words are above";
    return made.commands.empty() ? "the plug-in started nothing" : "the tags program wrote no new file";
}

std::string WhatIsThere(const MadeTags& made)
{
    if (made.isNew)
        return "A file from this run is in place; do not rely on it.";
    return made.hadFile ? "The old file is as it was." : "There is no such file now.";
}

bool ReportFailure(const MadeTags& made, const std::string& toSee)
{
    if (!made.problem.empty())
        Complain(made.file + " was not made: " + made.problem);
    else
        Complain(made.file + " was not made: " + WhatFailed(made) + "\n  " + WhatIsThere(made) +
                 "\n  To see what is run:  " + toSee);
    return false;
}

bool ReportMade(OutputAside& output, const MadeTags& made)
{
    if (made.count.files == 0)
        Complain("no file was found to make tags of; their suffixes are the setting DeclIndexSuffixes");
    return WriteOrComplain(output, Summary(made), kWhatWasDone);
}

// As whole lines, to paste into a shell.
bool PrintCommands(OutputAside& output, const MadeTags& made)
{
    std::string text;
    for (const ShellCommands::Command& command : made.commands) {
        if (AppendsNothing(command.text))
            text += "# Left out as long as its directory does not exist:\n";
        text += command.text + (command.text.ends_with('\n') ? "" : "\n");
    }
    return WriteOrComplain(output, text, kWhatWasDone);
}

} // namespace

bool ReportTags(OutputAside& output, const MadeTags& made, const std::string& toSee)
{
    switch (made.outcome) {
    case Outcome::Made:
        return ReportMade(output, made);
    case Outcome::Kept:
        return PrintCommands(output, made);
    case Outcome::Interrupted:
        Complain("interrupted. " + made.file + ": " + (made.isNew ? "the new file is in place." : WhatIsThere(made)));
        return false;
    default:
        return ReportFailure(made, toSee);
    }
}

} // namespace wren
