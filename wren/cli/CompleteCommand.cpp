#include "wren/cli/Commands.h"

#include "base/ExitStatus.h"
#include "vetch/storage/Home.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/Complete.h"
#include "wren/cli/TagsAdvice.h"
#include "wren/core/ProgramOutput.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace wren {

namespace {

constexpr const char* kCompleteHelp =
    R"(The caret is before the character of that column, 1 being the line's first. Without a
column it is at the end of the line. The name, the qualified name or the selector that
ends at the caret is completed.

If all candidates have the same continuation, it is inserted, and the completed word is
printed with its scopes. Otherwise the candidates are printed, one per line, at most 200;
if there are more, a message on standard error says so. No file is changed.

With --auto, the list is printed that typing the character before the caret would open,
with the names of all tags loaded, which takes a second or two. This needs three characters
of a name and fewer than 200 candidates, and inserts nothing.

Exit status: 0 something was printed, 1 there is no completion, 2 wrong usage or an
unreadable file, 3 no tags file serves the place.

Examples:
    wren complete src/main.cpp:12
    wren complete src/main.cpp:12:8 --edit
    wren complete src/main.cpp:12:8 --auto)";

struct CompleteWords {
    std::string place;
    bool edit = false;
    CompleteOptions options;
};

int PrintCandidates(ProgramOutput& output, const CompleteWords& words, const CompleteResult& result)
{
    std::string lines;
    for (const std::string& candidate : result.candidates)
        lines += candidate + "\n";
    if (words.edit)
        Complain("nothing is inserted; these are the candidates");
    if (!WriteOrComplain(output, lines, "the candidates"))
        return base::exit_status::kUnusable;
    if (result.more)
        Complain("these are the first " + std::to_string(result.candidates.size()) + " candidates; there are more");
    return base::exit_status::kDone;
}

int PrintEdit(ProgramOutput& output, const CompleteWords& words, const CompleteResult& result)
{
    const std::string completion = (words.edit ? result.line : result.word) + "\n";
    return WriteOrComplain(output, completion, "the completion") ? base::exit_status::kDone
                                                                 : base::exit_status::kUnusable;
}

void SayWhyNothing(const CompleteWords& words, const CompleteResult& result)
{
    const std::string place = words.options.place.Text();
    if (words.options.whileTyping)
        Complain("typing offers nothing at " + place +
                 ": it needs three characters of a name, and 1 to 199 candidates");
    else
        Complain("nothing in the tags files completes the word at " + place);
    if (words.options.whileTyping && Home().empty())
        Complain("HOME is not set: without it each key stroke reloads the names, and no candidate is offered");
    for (const std::string& problem : ProblemsWithTags(result.directory))
        Complain(problem);
}

int ReportCompletion(ProgramOutput& output, const CompleteWords& words, const CompleteResult& result)
{
    using Outcome = CompleteResult::Outcome;
    switch (result.outcome) {
    case Outcome::Inserted:
        return PrintEdit(output, words, result);
    case Outcome::Offered:
        return PrintCandidates(output, words, result);
    case Outcome::NoCompletion:
        SayWhyNothing(words, result);
        return base::exit_status::kNothing;
    case Outcome::NoWord:
        Complain("there is nothing to complete at " + words.options.place.Text());
        return base::exit_status::kNothing;
    case Outcome::NoTags:
        Complain(RemedyForNoTags(result.directory));
        return base::exit_status::kNoTags;
    default:
        Complain(result.error);
        return base::exit_status::kUnusable;
    }
}

int RunComplete(CompleteWords& words)
{
    std::string error;
    const std::optional<Place> place = ParsePlace(words.place, &error);
    if (!place) {
        Complain(error);
        return base::exit_status::kUnusable;
    }
    words.options.place = *place;
    ProgramOutput output;
    const CompleteResult result = Complete(words.options);
    return ReportCompletion(output, words, result);
}

} // namespace

void AddCompleteCommand(CLI::App& app, int* status)
{
    CLI::App* command = app.add_subcommand("complete", "Complete the word at a place, or print what it could become");
    auto words = std::make_shared<CompleteWords>();
    command->add_option("place", words->place, "Where the caret is: FILE:LINE[:COLUMN], from 1, columns in bytes")
        ->required();
    CLI::Option* whileTyping =
        command->add_flag("--auto", words->options.whileTyping, "Print the list that typing opens; insert nothing");
    command->add_flag("--edit", words->edit, "Print the whole completed line, not only the word")
        ->excludes(whileTyping);
    AddTagsOptions(*command, words->options.tags);
    command->footer(kCompleteHelp);
    command->callback([words, status] { *status = RunComplete(*words); });
}

} // namespace wren
