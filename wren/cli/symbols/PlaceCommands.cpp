#include "wren/cli/symbols/SymbolCommands.h"

#include "base/ExitStatus.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/symbols/AskedPlace.h"
#include "wren/cli/symbols/PlaceRun.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

namespace wren {

namespace {

constexpr size_t kMostAnswers = 100;
constexpr size_t kMostReferences = 1000;

constexpr const char* kPlace = R"(
PLACE is FILE:LINE[:COLUMN]; without a column, the first name of the line that is not a
keyword. With "-", places are read from standard input, one per line. Each answer then ends
with an empty line, or is one line of JSON: an object with "place", "name", "answers" and
"more", or "error".)";

constexpr const char* kIndex = R"(
The index of the project is made when there is none, which takes a while, and is checked
against the files otherwise. The file of the place counts as it is now, in any case.

Exit status: 0 something was found, 1 nothing was, 2 wrong usage, an unreadable file, or no
index can be made.
)";

// A command that differs from its siblings only in this.
struct Command {
    const char* name;
    const char* description;
    const char* explanation;
    const char* examples;
    PlaceQuestion question;
    size_t limit = kMostAnswers;
};

Command Definition()
{
    return {"definition",
            "Print where the name at a place is defined",
            "Prints definitions, or declarations if there are none, best first, each as\n"
            "\"path:line:column: the source line\". At a definition, prints its declaration.\n",
            "Examples:\n"
            "    wren definition src/main.cpp:12:8\n"
            "    wren definition src/main.cpp:12:8 --limit 1 --json",
            {"no definition was found of ", [](const AskedPlace& place, symbols::Limits limits) {
                 return LinesOf(place.Resolver().Definition(place.Place(), limits), place.Workspace());
             }}};
}

Command Declaration()
{
    return {"declaration",
            "Print where the name at a place is declared",
            "Prints declarations, or definitions if there are none, best first, each as\n"
            "\"path:line:column: the source line\". At a declaration, prints its definition.\n",
            "Examples:\n"
            "    wren declaration src/main.cpp:12:8\n"
            "    wren declaration src/main.cpp:12:8 --json",
            {"no declaration was found of ", [](const AskedPlace& place, symbols::Limits limits) {
                 return LinesOf(place.Resolver().Declaration(place.Place(), limits), place.Workspace());
             }}};
}

Command Implementations()
{
    return {"implementations",
            "Print the classes derived from a class, or the methods that override a method",
            "Prints what derives from the class at a place, or overrides the method there, each as\n"
            "\"path:line:column: the source line\".\n",
            "Examples:\n"
            "    wren implementations src/shape.h:12:7",
            {"no implementation was found of ", [](const AskedPlace& place, symbols::Limits limits) {
                 return LinesOf(place.Resolver().Implementations(place.Place(), limits), place.Workspace());
             }}};
}

Command References()
{
    return {"references",
            "Print where the name at a place is used",
            "Prints the occurrences of the name outside of comments and strings, but for those that\n"
            "provably mean something else. Those in the place's file come first, each as\n"
            "\"path:line:column: the source line\".\n",
            "Examples:\n"
            "    wren references src/main.cpp:12:8\n"
            "    wren references --symbol Area --in src",
            {"no reference was found to ",
             [](const AskedPlace& place, symbols::Limits limits) {
                 return LinesOf(place.Resolver().References(place.Place(), limits), place.Workspace());
             }},
            kMostReferences};
}

struct PlaceWords {
    Command command;
    SymbolWords common;
    std::string place;
    std::string symbol;
};

int Run(const PlaceWords& words)
{
    if (words.place.empty() == words.symbol.empty()) {
        Complain("give a place, FILE:LINE[:COLUMN]; see wren " + std::string(words.command.name) + " --help");
        return base::exit_status::kUnusable;
    }
    PlaceRun run(words.command.question, words.common);
    if (!words.symbol.empty())
        return run.AnswerReferences(words.symbol);
    return words.place == "-" ? run.AnswerInput() : run.Answer(words.place);
}

CLI::App* AddPlaceCommand(CLI::App& app, int* status, const std::shared_ptr<PlaceWords>& words)
{
    const Command& what = words->command;
    CLI::App* command = app.add_subcommand(what.name, what.description);
    command->add_option("place", words->place, "Where the name stands, or - to read places from standard input");
    words->common.limit = what.limit;
    AddAnswerOptions(*command, words->common);
    AddTreeOptions(*command, words->common);
    AddNoSystemOption(*command, words->common);
    command->footer(std::string(what.explanation) + kPlace + "\n" + kIndex + "\n" + what.examples);
    command->callback([words, status] { *status = Run(*words); });
    return command;
}

std::shared_ptr<PlaceWords> WordsFor(Command command)
{
    return std::make_shared<PlaceWords>(PlaceWords{std::move(command), {}, {}, {}});
}

} // namespace

void AddPlaceCommands(CLI::App& app, int* status)
{
    for (const auto& make : {Definition, Declaration, Implementations})
        AddPlaceCommand(app, status, WordsFor(make()));
    const std::shared_ptr<PlaceWords> words = WordsFor(References());
    AddPlaceCommand(app, status, words)
        ->add_option("--symbol", words->symbol, "The uses of this name instead")
        ->type_name("NAME");
}

} // namespace wren
