#include "wren/cli/Lookup.h"

#include "scan/PatternScan.h"
#include "scan/Text.h"
#include "tags/MatchText.h"
#include "tags/Tags.h"
#include "vetch/storage/BPath.h"
#include "wren/cli/SourcePlace.h"
#include "wren/cli/SymbolPattern.h"

#include <algorithm>
#include <filesystem>

namespace wren {

namespace {

namespace fs = std::filesystem;

using Found = LookupResult::Outcome;

struct Question {
    BEntry directory; // where the search for tags files starts
    std::string shownDirectory;
    std::optional<std::string> pattern; // nullopt when there is no symbol
};

std::optional<Question> QuestionAt(const Place& place, std::string* error)
{
    const std::optional<SourcePlace> source = ReadSource(place, WithoutColumn::FirstIdentifier, error);
    if (!source)
        return std::nullopt;
    Question question{source->directory, source->shownDirectory, std::nullopt};
    if (const auto found = scan::PatternForLookup(scan::StringText(source->text), source->offset, source->offset))
        question.pattern = found->text;
    return question;
}

std::optional<Question> QuestionFor(const std::string& symbol, const LookupOptions& options, std::string* error)
{
    const fs::path directory = options.directory.empty() ? fs::current_path() : fs::absolute(options.directory);
    if (!fs::is_directory(directory)) {
        *error = directory.string() + " is not a directory";
        return std::nullopt;
    }
    const std::optional<std::string> pattern = PatternForSymbol(symbol);
    if (!pattern && options.wanted != WantedTags::Any) {
        *error = "\"" + symbol + "\" can be looked up only without --declaration and --definition";
        return std::nullopt;
    }
    const BEntry start(directory.c_str());
    return Question{start, BPath(&start).Path(), pattern.value_or(symbol)};
}

std::vector<Match> MatchesOf(const std::string& pattern, WantedTags wanted, const ServingTags& files)
{
    Tags tags(files.Local(), files.System(), pattern, false); // also searches stale tags: a lookup changes no file
    const std::vector<TagData> found = CollectMatches(tags, wanted);
    const bool showDirectory = FileNamesAreAmbiguous(found);
    std::vector<Match> matches;
    matches.reserve(found.size());
    for (const TagData& tag : found)
        matches.push_back(
            {tag.file.Path(), std::max<long>(tag.line, 1), MatchText(tag, showDirectory, files.ShownHome())});
    return matches;
}

} // namespace

LookupResult LookUp(const LookupOptions& options)
{
    LookupResult result;
    ServingTags files;
    if (!files.Prepare(options.tags, &result.error))
        return result;
    const std::optional<Question> question = options.symbol ? QuestionFor(*options.symbol, options, &result.error)
                                                            : QuestionAt(*options.place, &result.error);
    if (!question)
        return result;
    result.directory = question->shownDirectory;
    if (!files.FindFrom(question->directory)) {
        result.outcome = Found::NoTags;
    } else if (!question->pattern) {
        result.outcome = Found::NothingThere;
    } else {
        result.matches = MatchesOf(*question->pattern, options.wanted, files);
        result.outcome = result.matches.empty() ? Found::NoMatch : Found::Matches;
    }
    return result;
}

} // namespace wren
