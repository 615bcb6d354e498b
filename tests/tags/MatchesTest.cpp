#include "tags/Matches.h"

#include "tags/Tags.h"
#include "tests/tags/TagsFolder.h"

namespace {

class MatchesTest : public testing::Test {
protected:
    TagsFolder local;
    TagsFolder system;

    Lines Found(const std::string& pattern, WantedTags wanted = WantedTags::Any)
    {
        const BEntry localEntry = local.Entry();
        const BEntry systemEntry = system.Entry();
        Tags tags(&localEntry, &systemEntry, pattern, false);
        Lines found;
        for (const TagData& match : CollectMatches(tags, wanted))
            found.push_back(Shown(match.name, match.qualifier, match.kind, match.file, match.line) +
                            (match.fromSystemTags ? " of the system" : ""));
        return found;
    }
};

TEST_F(MatchesTest, ComeInTheOrderOfTheFilesLocalOnesFirst)
{
    local.WriteTags(TagLine("draw", "b.h", 12, "p", "class:View") + TagLine("draw", "a.cpp", 34, "f") +
                    TagLine("drawn", "a.cpp", 35, "f"));
    system.WriteTags(TagLine("draw", "b.h", 5, "d"));
    EXPECT_EQ(Found("draw"), (Lines{"View::draw p b.h:12", "draw f a.cpp:34", "draw d b.h:5 of the system"}));
    EXPECT_EQ(Found("View::draw"), Lines{"View::draw p b.h:12"});
}

TEST_F(MatchesTest, OfTheSystemBehindOtherNamesAreHiddenByLocalOnes)
{
    local.WriteTags(TagLine("draw", "a.cpp", 1, "f"));
    system.WriteTags(TagLine("about", "b.h", 5, "f") + TagLine("draw", "b.h", 6, "f"));
    EXPECT_EQ(Found("draw"), Lines{"draw f a.cpp:1"});
    local.WriteTags("");
    EXPECT_EQ(Found("draw"), Lines{"draw f b.h:6 of the system"});
}

struct KindCase {
    const char* why;
    char kind;
    bool definition;
};

const KindCase kKindCases[] = {
    {"function", 'f', true},   {"Objective-C method", 'o', true}, {"Objective-C class method", 'O', true},
    {"the kind R", 'R', true}, {"prototype", 'p', false},         {"class", 'c', false},
    {"struct", 's', false},    {"variable", 'v', false},          {"macro", 'd', false},
    {"a small r", 'r', false}, {"a capital F", 'F', false},       {"Objective-C interface", 'X', false},
};

TEST_F(MatchesTest, AreDefinitionsOrDeclarationsByTheirKind)
{
    for (const KindCase& row : kKindCases) {
        local.WriteTags(TagLine("it", "a.cpp", 1, std::string(1, row.kind)));
        EXPECT_EQ(Found("it").size(), 1u) << row.why;
        EXPECT_EQ(Found("it", WantedTags::Definitions).size(), row.definition ? 1u : 0u) << row.why;
        EXPECT_EQ(Found("it", WantedTags::Declarations).size(), row.definition ? 0u : 1u) << row.why;
    }
}

TEST_F(MatchesTest, EndWithTheFirstOneBeyondForty)
{
    for (const int count : {40, 41, 42, 60}) {
        std::string lines;
        Lines first;
        for (int line = 1; line <= count; ++line) {
            lines += TagLine("many", "a.cpp", line, "p");
            if (line <= 41)
                first.push_back("many p a.cpp:" + std::to_string(line));
        }
        local.WriteTags(lines);
        EXPECT_EQ(Found("many"), first) << count;
    }
}

TEST_F(MatchesTest, OfAnUnwantedKindDoNotCount)
{
    std::string lines;
    for (int line = 1; line <= 45; ++line)
        lines += TagLine("many", "b.h", line, "p");
    local.WriteTags(lines + TagLine("many", "a.cpp", 1, "f"));
    EXPECT_EQ(Found("many", WantedTags::Definitions), Lines{"many f a.cpp:1"}) << "behind 45 prototypes";
}

TEST_F(MatchesTest, OfAnUnwantedKindDoNotEndTheSearchAtTheNextName)
{
    local.WriteTags(TagLine("draw", "b.h", 12, "p") + TagLine("elsewhere", "b.h", 1, "f") +
                    TagLine("draw", "a.cpp", 34, "f") + TagLine("elsewhere", "b.h", 2, "f") +
                    TagLine("draw", "a.cpp", 56, "f"));
    EXPECT_EQ(Found("draw", WantedTags::Definitions), Lines{"draw f a.cpp:34"}) << "a rejected match is not a match";
    EXPECT_EQ(Found("draw"), Lines{"draw p b.h:12"}) << "an accepted one is";
}

TEST_F(MatchesTest, AreNoneWithoutAFileAndLeaveNoneOpen)
{
    Tags none(nullptr, nullptr, "draw", false);
    EXPECT_TRUE(CollectMatches(none, WantedTags::Any).empty());
    std::string lines;
    for (int line = 1; line <= 60; ++line)
        lines += TagLine("many", "a.cpp", line, "p");
    local.WriteTags(lines);
    const long before = OpenDescriptors();
    EXPECT_EQ(Found("many").size(), 41u);
    Found("missing");
    EXPECT_EQ(OpenDescriptors(), before) << "wherever the search ended";
}

} // namespace
