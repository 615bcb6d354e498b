#include "wren/cli/Commands.h"

#include "base/ExitStatus.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/Lookup.h"
#include "wren/cli/TagsAdvice.h"
#include "wren/core/ProgramOutput.h"
#include "wren/core/TerminalText.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>

namespace wren {

namespace {

constexpr const char* kLookupHelp = R"(Matches are printed as "path:line: item", as compilers and grep do, at most 41.
Without a column, the first identifier of the line is looked up. One symbol may match
functions, classes, macros and selectors. A qualified name matches from its inner end
("Inner::f" finds "Outer::Inner::f"), and template arguments are ignored.

Tags come from the nearest file "tags" at or above the source file, and from
~/Library/Caches/SystemHeaderTags. Make them with:
    wren tags DIR
    wren tags --system

Exit status: 0 something matched, 1 nothing did, 2 wrong usage or an unreadable file,
3 no tags file serves the place.

Examples:
    wren lookup src/main.cpp:12:8
    wren lookup src/main.cpp:12:8 --definition
    wren lookup --symbol Outer::Inner::name
    wren lookup --symbol setObject:forKey: --in src --declaration)";

struct LookupWords {
    std::string place;
    std::string symbol;
    bool declaration = false;
    bool definition = false;
    LookupOptions options;
};

std::string Line(const Match& match, bool colour)
{
    return ShownPlace(match.path, match.line, std::nullopt, colour) + ": " + match.item + "\n";
}

// Only a terminal gets names without control characters.
Match AsShown(const ProgramOutput& output, Match match)
{
    if (output.IsTerminal()) {
        match.path = ForTerminal(match.path);
        match.item = ForTerminal(match.item);
    }
    return match;
}

std::string WhatWasAsked(const LookupOptions& options)
{
    return options.symbol ? "\"" + *options.symbol + "\"" : "the symbol at " + options.place->Text();
}

int PrintMatches(ProgramOutput& output, const std::vector<Match>& matches)
{
    const bool colour = WantsColour(output);
    for (const Match& match : matches)
        if (!WriteAsIsOrComplain(output, Line(AsShown(output, match), colour), "the matches"))
            return base::exit_status::kUnusable;
    if (matches.size() == kMostMatches)
        Complain("these are the first " + std::to_string(kMostMatches) + " matches; there may be more");
    return base::exit_status::kDone;
}

int ReportMatches(ProgramOutput& output, const LookupOptions& options, const LookupResult& result)
{
    using Outcome = LookupResult::Outcome;
    switch (result.outcome) {
    case Outcome::Matches:
        return PrintMatches(output, result.matches);
    case Outcome::NoTags:
        Complain(RemedyForNoTags(result.directory));
        return base::exit_status::kNoTags;
    case Outcome::NothingThere:
        Complain("there is no symbol at " + options.place->Text());
        return base::exit_status::kNothing;
    case Outcome::NoMatch:
        Complain("nothing in the tags files matches " + WhatWasAsked(options));
        for (const std::string& problem : ProblemsWithTags(result.directory))
            Complain(problem);
        return base::exit_status::kNothing;
    default:
        Complain(result.error);
        return base::exit_status::kUnusable;
    }
}

// Turns the words into options; false, after a message, when they are invalid.
bool UnderstandLookup(LookupWords& words)
{
    if (words.place.empty() == words.symbol.empty()) {
        Complain("give either FILE:LINE[:COLUMN] or --symbol NAME; see wren lookup --help");
        return false;
    }
    if (!words.options.directory.empty() && words.symbol.empty()) {
        Complain("--in requires --symbol");
        return false;
    }
    std::string error;
    if (!words.symbol.empty())
        words.options.symbol = words.symbol;
    else
        words.options.place = ParsePlace(words.place, &error);
    if (!error.empty()) {
        Complain(error);
        return false;
    }
    words.options.wanted = words.declaration  ? WantedTags::Declarations
                           : words.definition ? WantedTags::Definitions
                                              : WantedTags::Any;
    return true;
}

int RunLookup(LookupWords& words)
{
    if (!UnderstandLookup(words))
        return base::exit_status::kUnusable;
    ProgramOutput output;
    const LookupResult result = LookUp(words.options);
    return ReportMatches(output, words.options, result);
}

} // namespace

void AddLookupCommand(CLI::App& app, int* status)
{
    CLI::App* command = app.add_subcommand("lookup", "Print where a symbol is declared and defined");
    auto words = std::make_shared<LookupWords>();
    command->add_option("place", words->place, "What to look up: FILE:LINE[:COLUMN], from 1, columns in bytes");
    command->add_option("--symbol", words->symbol, "Look up this name instead");
    command->add_option("--in", words->options.directory,
                        "With --symbol: use the tags that serve this directory (default: the current one)");
    CLI::Option* declaration = command->add_flag("--declaration", words->declaration, "Declarations only");
    command->add_flag("--definition", words->definition, "Definitions only")->excludes(declaration);
    AddTagsOptions(*command, words->options.tags);
    command->footer(kLookupHelp);
    command->callback([words, status] { *status = RunLookup(*words); });
}

} // namespace wren
