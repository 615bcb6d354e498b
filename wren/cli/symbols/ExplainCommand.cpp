#include "wren/cli/symbols/SymbolCommands.h"

#include "base/ExitStatus.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/symbols/AskedPlace.h"
#include "wren/cli/symbols/SymbolWords.h"
#include "wren/core/ProgramOutput.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

namespace wren {

namespace {

constexpr const char* kExplainHelp =
    R"(Prints what the text around the name was taken for, and the steps that led to the answer. If
an answer is wrong, send this with your report: it contains names and paths of your sources,
so read it first.

PLACE is FILE:LINE[:COLUMN]; without a column, the first name of the line that is not a
keyword.

Exit status: 0 it was printed, 1 there is no name at the place, 2 wrong usage, an unreadable
file, or no index can be made.

Examples:
    wren explain src/main.cpp:12:8)";

struct ExplainWords {
    SymbolWords common;
    std::string place;
};

int RunExplain(const ExplainWords& words)
{
    ProgramOutput output;
    CurrentIndexes indexes(words.common);
    const base::Result<std::unique_ptr<AskedPlace>> place = AskedPlace::At(words.place, indexes);
    if (!place) {
        Complain(place.Failure().Message());
        return base::exit_status::kUnusable;
    }
    if ((*place)->Name().empty()) {
        Complain(NoNameAt(words.place));
        return base::exit_status::kNothing;
    }
    std::string text = (*place)->Resolver().Explain((*place)->Place());
    if (!text.ends_with('\n'))
        text += '\n';
    return WriteOrComplain(output, text, "the explanation") ? base::exit_status::kDone : base::exit_status::kUnusable;
}

} // namespace

void AddExplainCommand(CLI::App& app, int* status)
{
    CLI::App* command = app.add_subcommand("explain", "Print how the name at a place was understood");
    auto words = std::make_shared<ExplainWords>();
    command->add_option("place", words->place, "Where the name stands: FILE:LINE[:COLUMN]")->required();
    AddTreeOptions(*command, words->common);
    AddNoSystemOption(*command, words->common);
    command->footer(kExplainHelp);
    command->callback([words, status] { *status = RunExplain(*words); });
}

} // namespace wren
