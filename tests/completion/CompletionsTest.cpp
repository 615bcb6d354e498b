#include "completion/Completions.h"

#include "tags/Tags.h"
#include "tests/completion/NamedTags.h"

#include <algorithm>

namespace {

class CompletionsTest : public testing::Test {
protected:
    TagsFolder local;
    TagsFolder system;

    Lines Found(const std::string& pattern)
    {
        const BEntry localEntry = local.Entry();
        const BEntry systemEntry = system.Entry();
        Tags tags(&localEntry, &systemEntry, pattern, false);
        return Completions(tags).Strings();
    }
};

TEST_F(CompletionsTest, AnEmptyPatternGivesAllNames)
{
    local.WriteTags(TagsOf({"b", "A::a", "setAll:"}));
    system.WriteTags(TagsOf({"c"}));
    EXPECT_EQ(Found(""), (Lines{"b", "A::a", "setAll:", "c"}));
}

TEST_F(CompletionsTest, KeepTheOrderOfTheFileWithoutDuplicates)
{
    local.WriteTags(TagsOf({"naa", "B::nab", "A::nab", "B::nab", "naa", "nac", "z"}));
    EXPECT_EQ(Found("na"), (Lines{"naa", "B::nab", "A::nab", "nac"}));
}

TEST_F(CompletionsTest, IncludeTheirScopesForAnyPattern)
{
    local.WriteTags(TagsOf({"nameA", "Outer::nameB", "A::Outer::nameC", "Other::nameD"}));
    EXPECT_EQ(Found("nam"), (Lines{"nameA", "Outer::nameB", "A::Outer::nameC", "Other::nameD"}));
    // A name with another scope ends the search no more than it is found: only another name does.
    EXPECT_EQ(Found("Outer::nam"), (Lines{"Outer::nameB", "A::Outer::nameC"}));
    EXPECT_EQ(Found("Nam"), Lines{}) << "case counts";
}

TEST_F(CompletionsTest, ComeFromTheSystemFileWhenNoLocalNameMatches)
{
    local.WriteTags(TagsOf({"a", "m", "z"}));
    system.WriteTags(TagsOf({"aa", "nb", "na"}));
    EXPECT_EQ(Found("n"), (Lines{"nb", "na"}));
}

// The search goes on in the system's file as it ended in the local one: at the first line that does not match. So what
// is near hides what is far, unless that begins the file.
TEST_F(CompletionsTest, LocalNamesHideSystemNames)
{
    local.WriteTags(TagsOf({"nc", "z"}));
    system.WriteTags(TagsOf({"a", "na"}));
    EXPECT_EQ(Found("n"), Lines{"nc"});
    system.WriteTags(TagsOf({"nb", "nc", "na", "o", "nd"}));
    EXPECT_EQ(Found("n"), (Lines{"nc", "nb", "na"})) << "local ones first";
}

// Sorted files are the rule, and reading one to its end at each question would take seconds.
TEST_F(CompletionsTest, EndAtTheFirstDifferentNameAfterAMatch)
{
    local.WriteTags(TagsOf({"a", "b", "na", "o", "nb"}));
    EXPECT_EQ(Found("n"), Lines{"na"});
}

TEST_F(CompletionsTest, StopAtAThousand)
{
    for (const int count : {999, 1000, 1001, 1500}) {
        local.WriteTags(TagsOf(Numbered("name", count)));
        const Lines expected = Numbered("name", std::min(count, 1000));
        EXPECT_EQ(Found("na"), expected) << count;
    }
    // What is met again does not count.
    const std::string tags = TagsOf(Numbered("name", 600));
    local.WriteTags(tags + tags + TagsOf({"namf"}));
    EXPECT_EQ(Found("na").size(), 601u);
}

TEST_F(CompletionsTest, BothFilesTogetherStopAtAThousand)
{
    local.WriteTags(TagsOf(Numbered("nlocal", 600)));
    system.WriteTags(TagsOf(Numbered("nsystem", 600)));
    const Lines found = Found("n");
    ASSERT_EQ(found.size(), 1000u);
    EXPECT_EQ(found[599], "nlocal599");
    EXPECT_EQ(found[999], "nsystem399");
}

TEST_F(CompletionsTest, StopAtTheCallersLimit)
{
    local.WriteTags(TagsOf({"na", "nb", "nc"}));
    const BEntry entry = local.Entry();
    Tags tags(&entry, nullptr, "n", false);
    Completions completions(tags);
    StringVector out;
    out.PushBackUnique("was there before");
    completions.FindCompletions(tags, out, 2);
    EXPECT_EQ(out.Strings(), (Lines{"na", "nb"}));
    completions.FindCompletions(tags, out, 1);
    EXPECT_EQ(out.Strings(), Lines{"na"});
    EXPECT_EQ(completions.Size(), 3u) << "the list that searches is another";
}

TEST_F(CompletionsTest, AMissingFileGivesNoNames)
{
    const BEntry missing((local.directory / "missing").c_str());
    Tags tags(&missing, &missing, "n", false);
    EXPECT_EQ(Completions(tags).Strings(), Lines{});
    local.WriteTags(TagsOf({"na"}));
    const BEntry entry = local.Entry();
    Tags found(&entry, nullptr, "n", false);
    Completions completions(found);
    completions.FindCompletions(tags, completions, 10);
    EXPECT_EQ(completions.Strings(), Lines{}) << "what was there is forgotten first";
}

TEST_F(CompletionsTest, NamesOfMissingSourcesAreLeftOut)
{
    local.WriteTags(TagsOf({"na"}) + TagLine("nb", "gone.cpp", 1, 'f') + TagsOf({"nc"}));
    EXPECT_EQ(Found("n"), (Lines{"na", "nc"}));
}

TEST_F(CompletionsTest, LeaveNoFileOpen)
{
    local.WriteTags(TagsOf(Numbered("name", 1200)));
    system.WriteTags(TagsOf({"name"}));
    const long before = OpenDescriptors();
    Found("name");
    Found("missing");
    EXPECT_EQ(OpenDescriptors(), before) << "wherever the search ended";
}

} // namespace
