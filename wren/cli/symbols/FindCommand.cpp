#include "wren/cli/symbols/SymbolCommands.h"

#include "base/ExitStatus.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/symbols/SymbolRow.h"
#include "wren/cli/symbols/SymbolWords.h"
#include "wren/core/ProgramOutput.h"
#include "wren/core/TerminalText.h"
#include "wren/symbols/ShownNames.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

namespace wren {

namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kMostMatches = 100;
constexpr const char* kMatches = "the matches";

constexpr const char* kFindHelp = R"(Prints the symbols whose names contain the pattern's letters in that order, each as
"path:line: kind name", best first: word starts and name starts come before others, then
shorter names. Case counts only if the pattern contains a capital. "Outer::na" also asks for
letters of the scope, and "path/na" for letters of the path.

With "-", patterns are read from standard input, one per line, and each answer is written at
once: an empty line ends it, or it is one line of JSON, an object with "pattern", "found" and
"more". That serves programs that ask at every key.

The index of the project is made when there is none, which takes a while, and is checked
against the files otherwise.

Exit status: 0 something was found, 1 nothing was, 2 wrong usage, or no index can be made.

Examples:
    wren find shape
    wren find Sh::ar --limit 10
    wren find src/area --json
    wren find - --json --in ~/src/project)";

struct FindWords {
    SymbolWords common;
    std::string pattern;
};

class FindRun {
public:
    FindRun(const FindWords& words, CurrentIndex& index, ProgramOutput& output)
        : words(words), workspace(index.Workspace()), output(output), colour(WantsColour(output)),
          current(std::filesystem::current_path())
    {
    }

    int Answer() const;
    int AnswerInput() const;

private:
    symbols::FuzzyMatches Find(const symbols::Snapshot& snapshot, const std::string& pattern) const
    {
        return snapshot.Fuzzy(pattern, {words.common.limit});
    }
    std::string Path(const symbols::Snapshot& snapshot, const symbols::FuzzyMatch& match) const
    {
        return workspace.AbsolutePath(snapshot.FileOf(match.symbol.file));
    }
    Json MatchJson(const symbols::Snapshot& snapshot, const symbols::FuzzyMatch& match) const;
    std::string Line(const symbols::Snapshot& snapshot, const symbols::FuzzyMatch& match) const;
    std::string Lines(const symbols::Snapshot& snapshot, const symbols::FuzzyMatches& matches) const;
    std::string InputAnswer(const std::string& pattern) const;

    const FindWords& words;
    const symbols::Workspace& workspace;
    ProgramOutput& output;
    const bool colour;
    const std::string current; // directory
};

Json FindRun::MatchJson(const symbols::Snapshot& snapshot, const symbols::FuzzyMatch& match) const
{
    Json json{{"path", Path(snapshot, match)}, {"line", match.symbol.line}};
    json.update(SymbolJson(match.symbol));
    json["score"] = match.score;
    json["positions"] = match.positions;
    return json;
}

std::string FindRun::Line(const symbols::Snapshot& snapshot, const symbols::FuzzyMatch& match) const
{
    if (words.common.json)
        return JsonLine(MatchJson(snapshot, match));
    const auto shown = [this](const std::string& text) { return output.IsTerminal() ? ForTerminal(text) : text; };
    return ShownPlace(shown(ShownPath(Path(snapshot, match), current)), match.symbol.line, std::nullopt, colour) +
           ": " + std::string(tagging::LongName(match.symbol.kind)) + " " + shown(QualifiedName(match.symbol)) + "\n";
}

std::string FindRun::Lines(const symbols::Snapshot& snapshot, const symbols::FuzzyMatches& matches) const
{
    std::string lines;
    for (const symbols::FuzzyMatch& match : matches.found)
        lines += Line(snapshot, match);
    return lines;
}

int FindRun::Answer() const
{
    const symbols::SnapshotPointer snapshot = workspace.Current();
    const symbols::FuzzyMatches matches = Find(*snapshot, words.pattern);
    if (matches.found.empty()) {
        Complain("no symbol matches \"" + words.pattern + "\"");
        return base::exit_status::kNothing;
    }
    if (!WriteAsIsOrComplain(output, Lines(*snapshot, matches), kMatches))
        return base::exit_status::kUnusable;
    if (matches.more)
        Complain("these are the best " + std::to_string(matches.found.size()) + "; there are more (--limit)");
    return base::exit_status::kDone;
}

std::string FindRun::InputAnswer(const std::string& pattern) const
{
    const symbols::SnapshotPointer snapshot = workspace.Current();
    const symbols::FuzzyMatches matches = Find(*snapshot, pattern);
    if (!words.common.json)
        return Lines(*snapshot, matches) + "\n";
    Json answer{{"pattern", pattern}, {"found", Json::array()}, {"more", matches.more}};
    for (const symbols::FuzzyMatch& match : matches.found)
        answer["found"].push_back(MatchJson(*snapshot, match));
    return JsonLine(answer);
}

int FindRun::AnswerInput() const
{
    for (std::string pattern; std::getline(std::cin, pattern);)
        if (!WriteAsIsOrComplain(output, InputAnswer(pattern), kMatches))
            return base::exit_status::kUnusable;
    return base::exit_status::kDone;
}

int RunFind(const FindWords& words)
{
    ProgramOutput output;
    CurrentIndexes indexes(words.common);
    const base::Result<CurrentIndex*> index = indexes.ForDirectory();
    if (!index) {
        Complain(index.Failure().Message());
        return base::exit_status::kUnusable;
    }
    const FindRun run(words, **index, output);
    return words.pattern == "-" ? run.AnswerInput() : run.Answer();
}

} // namespace

void AddFindCommand(CLI::App& app, int* status)
{
    CLI::App* command = app.add_subcommand("find", "Print the symbols whose names match a few letters");
    auto words = std::make_shared<FindWords>();
    words->common.limit = kMostMatches;
    words->common.index.withSystem = false;
    command->add_option("pattern", words->pattern, "Letters of the name, or - to read patterns from standard input")
        ->required();
    AddAnswerOptions(*command, words->common);
    AddTreeOptions(*command, words->common);
    command->add_flag("--system", words->common.index.withSystem, "Also find symbols in the headers of the system");
    command->footer(kFindHelp);
    command->callback([words, status] { *status = RunFind(*words); });
}

} // namespace wren
