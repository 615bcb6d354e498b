#include "tags/Candidates.h"

#include "scan/PatternScan.h"
#include "scan/Text.h"
#include "tags/CompletionCache.h"
#include "tags/StringVector.h"
#include "tags/Tags.h"
#include "tests/tags/TagsFolder.h"
#include "vetch/support/FThread.h"

namespace {

StringVector CandidatesOf(const Lines& names)
{
    StringVector candidates;
    for (const std::string& name : names)
        candidates.PushBackUnique(name.c_str());
    return candidates;
}

TEST(Candidates, AreFoundWithoutAWindow)
{
    const TagsFolder local(TagLine("nab", "a.cpp", 1, "f", "class:A") + TagLine("nab", "a.cpp", 2, "f", "class:A") +
                           TagLine("nac", "a.cpp", 3, "f") + TagLine("z", "a.cpp", 4, "f"));
    const BEntry entry = local.Entry();
    Tags tags(&entry, nullptr, "na", false);
    StringVector found;
    found.PushBackUnique("was there before");
    FindCandidates(tags, found, 1000);
    EXPECT_EQ(found.Strings(), (Lines{"A::nab", "nac"}));
    FindCandidates(tags, found, 1);
    EXPECT_EQ(found.Strings(), Lines{"A::nab"});
}

struct BeginningCase {
    const char* why;
    Lines candidates;
    const char* common;
};

const BeginningCase kBeginnings[] = {
    {"none", {}, ""},
    {"one is its own", {"name"}, "name"},
    {"what all begin with", {"nameA", "nameB"}, "name"},
    {"two characters that differ in their second bytes", {"caf\xc3\xa9", "caf\xc3\xa8"}, "caf"},
    {"nothing but such a character", {"\xc3\xa9", "\xc3\xa8"}, ""},
    {"a whole character", {"caf\xc3\xa9s", "caf\xc3\xa9t"}, "caf\xc3\xa9"},
    {"one is the beginning of the others", {"caf\xc3\xa9", "caf\xc3\xa9s"}, "caf\xc3\xa9"},
};

TEST(Candidates, HaveABeginningOfWholeCharactersInCommon)
{
    for (const BeginningCase& row : kBeginnings) {
        EXPECT_EQ(CommonBeginning(CandidatesOf(row.candidates)), row.common) << row.why;
    }
}

using Action = Suggestion::Action;

struct SuggestionCase {
    const char* why;
    const char* text; // the caret is at its end
    Lines candidates;
    Action action;
    const char* suggested;
};

const SuggestionCase kSuggestions[] = {
    {"nothing", "na", {}, Action::Nothing, ""},
    {"the name that is typed", "name", {"name"}, Action::Nothing, ""},
    {"what all have in common", "na", {"nameA", "nameB"}, Action::Insert, "me"},
    {"the rest of the only one", "na", {"name"}, Action::Insert, "me"},
    {"several without more in common", "name", {"nameA", "nameB"}, Action::Offer, ""},
    {"the only one with a scope that is not typed", "na", {"Outer::name"}, Action::Replace, "Outer::name"},
    {"several with such scopes", "na", {"Outer::name", "Outer::names"}, Action::Offer, ""},
    {"a scope that is typed", "Outer::na", {"Outer::name"}, Action::Insert, "me"},
    {"no scope behind std::", "std::s", {"s::t"}, Action::Replace, "s::t"},
    {"the same without std::", "s", {"s::t"}, Action::Insert, "::t"},
};

TEST(Suggestion, DependsOnWhatTheCandidatesHaveInCommon)
{
    for (const SuggestionCase& row : kSuggestions) {
        const scan::StringText text(row.text);
        const auto typed = scan::PatternForCompletion(text, text.Length(), text.Length());
        ASSERT_TRUE(typed.has_value()) << row.why;
        const Suggestion suggestion = SuggestionFor(text, *typed, CandidatesOf(row.candidates));
        EXPECT_EQ(suggestion.action, row.action) << row.why;
        EXPECT_EQ(suggestion.text, row.suggested) << row.why;
    }
}

TEST(CandidatesWhileTyping, AreNoneWhenThereAreTooManyOrOnlyThePatternIsLeft)
{
    std::string lines = TagLine("alone", "a.cpp", 1, "f");
    for (int i = 100; i < 300; ++i)
        lines += TagLine("many" + std::to_string(i), "a.cpp", i, "f");
    const TagsFolder folder(lines);
    const BEntry entry = folder.Entry();
    Tags tags(nullptr, &entry, "", false);
    CompletionCache cache;
    ASSERT_FALSE(cache.LoadIfNeeded(tags, true));
    vetch::JoinThreads();
    ASSERT_TRUE(cache.LoadIfNeeded(tags, true));
    EXPECT_EQ(CandidatesWhileTyping(cache, "many"), Lines{}) << "200";
    EXPECT_EQ(CandidatesWhileTyping(cache, "many1").size(), 100u);
    EXPECT_EQ(CandidatesWhileTyping(cache, "alo"), Lines{"alone"});
    EXPECT_EQ(CandidatesWhileTyping(cache, "alone"), Lines{}) << "typed in full";
    EXPECT_EQ(CandidatesWhileTyping(cache, "none"), Lines{});
}

} // namespace
