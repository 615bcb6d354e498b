#include "wren/cli/TagsReport.h"

#include "wren/cli/CommandSupport.h"
#include "wren/cli/MakeTags.h"
#include "wren/core/TagsLine.h"

#include <algorithm>
#include <cstdio>

namespace wren {

namespace {

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
           ", " + made.run.file + "\n";
}

std::string WhatIsThere(const TagsOutcome& run)
{
    if (run.isNew)
        return "A file from this run is in place; do not rely on it.";
    return run.hadFile ? "The old file is unchanged." : "There is no such file now.";
}

bool HasRun(const TagsOutcome& run)
{
    return std::ranges::any_of(run.lines, [](const TagsOutcome::Line& line) { return line.status.has_value(); });
}

bool ReportFailure(const MadeTags& made, const std::string& toSee)
{
    std::string text = made.run.file + " was not made: " + made.run.problem;
    if (HasRun(made.run))
        text += "; the output above has the details\n  " + WhatIsThere(made.run) + "\n  To see what is run:  " + toSee;
    Complain(text);
    return false;
}

bool ReportMade(ProgramOutput& output, const MadeTags& made)
{
    if (made.count.files == 0)
        Complain("no file was found to tag; the setting DeclIndexSuffixes lists the suffixes");
    return WriteOrComplain(output, Summary(made), kWhatWasDone);
}

// Prints complete lines, to paste into a shell.
bool PrintCommands(ProgramOutput& output, const MadeTags& made)
{
    std::string text;
    for (const TagsOutcome::Line& command : made.run.lines) {
        if (AppendsNothing(command.text))
            text += "# Left out while its directory does not exist:\n";
        text += command.text + (command.text.ends_with('\n') ? "" : "\n");
    }
    return WriteOrComplain(output, text, kWhatWasDone);
}

} // namespace

bool ReportTags(ProgramOutput& output, const MadeTags& made, const std::string& toSee)
{
    using Kind = TagsOutcome::Kind;
    if (made.kept)
        return PrintCommands(output, made);
    switch (made.run.kind) {
    case Kind::Made:
        return ReportMade(output, made);
    case Kind::Interrupted:
        Complain("interrupted. " + made.run.file + ": " +
                 (made.run.isNew ? "the new file is in place." : WhatIsThere(made.run)));
        return false;
    default:
        return ReportFailure(made, toSee);
    }
}

} // namespace wren
