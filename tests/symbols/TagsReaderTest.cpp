// A workspace with tags files.

#include "symbols/Workspace.h"

#include "tests/symbols/IndexStory.h"

#include <gtest/gtest.h>

namespace symbols {

namespace {

class TagsOfWorkspace : public testing::Test {
protected:
    Workspace::TagsProblems Set(const std::string& tags)
    {
        return workspace.SetTagsFiles({story.Write("tags", tags)}, cancel);
    }
    Symbol Only(std::string_view name)
    {
        current = workspace.Current();
        const Symbols symbols = current->ByName(name, {});
        EXPECT_EQ(symbols.found.size(), 1u) << name;
        return symbols.found.empty() ? Symbol() : symbols.found[0];
    }

    IndexStory story;
    base::CancelToken cancel;
    Workspace workspace{{.root = story.top, .cache = story.Cache(), .withSystem = false, .tagging = TestSettings()}};
    SnapshotPointer current;
};

} // namespace

TEST_F(TagsOfWorkspace, AreFoundWithAllTheirFields)
{
    EXPECT_TRUE(Set("!_TAG_FILE_SORTED\t1\t/x/\n"
                    "area\tsrc/s.cpp\t/^  double area(int a) const;$/;\"\tkind:p\tline:7\tscope:class:n::Shape\t"
                    "typeref:typename:double\tsignature:(int a) const\taccess:public\tend:9\n"
                    "Shape\tsrc/s.cpp\t3;\"\tc\tnamespace:n\tinherits:Base,n::Other\n"
                    "other.py\tx.py\t1;\"\tf\n"
                    "broken line\n")
                    .empty());
    const Symbol area = Only("area");
    EXPECT_EQ(current->FileOf(area.file).path, "src/s.cpp");
    EXPECT_EQ(area.line, 7u);
    EXPECT_EQ(area.endLine, 9u);
    EXPECT_EQ(area.kind, SymbolKind::Prototype);
    EXPECT_EQ(area.scope, "n::Shape");
    EXPECT_EQ(area.scopeKind, SymbolKind::Class);
    EXPECT_EQ(area.type, "double");
    EXPECT_EQ(area.signature, "(int a) const");
    EXPECT_FALSE(area.isDefinition);
    EXPECT_TRUE(Only("Shape").isDefinition);
    EXPECT_EQ(current->InScope("n::Shape", {}).found.size(), 1u);
    EXPECT_EQ(current->DerivedFrom("Base", {}).found.size(), 1u);
    EXPECT_EQ(current->Fuzzy("shp", {}).found.size(), 1u);
    EXPECT_EQ(AnswerFor(current, "other.py"), "other.py: in") << "another language";
}

TEST_F(TagsOfWorkspace, HaveTheLinesThatTheirPatternsFit)
{
    struct Case {
        const char* why;
        const char* name;
        const char* address;
        unsigned line;
    };
    const Case cases[] = {
        {"a whole line", "whole", "/^int whole;$/", 2},
        {"the beginning of a long line", "cut", "/^int cut(/", 4},
        {"escapes of the pattern", "slash", R"(/^int slash; \/\/ \\n$/)", 3},
        {"backwards", "back", "?^int back;$?", 5},
        {"a number counts more than a pattern", "both", "5;/^int whole;$/", 5},
        {"a pattern that fits nothing", "gone", "/^int gone;$/", 1},
        {"without an extension", "plain", "2", 2},
    };
    story.Write("a.c", "\nint whole;\nint slash; // \\n\nint cut(int a);\nint back;\r\n");
    std::string tags;
    for (const Case& each : cases)
        tags +=
            std::string(each.name) + "\ta.c\t" + each.address + (each.name == std::string("plain") ? "\n" : ";\"\tv\n");
    EXPECT_TRUE(Set(tags).empty());
    for (const Case& each : cases)
        EXPECT_EQ(Only(each.name).line, each.line) << each.why;
}

TEST_F(TagsOfWorkspace, GiveWayToTheIndexAndToOpenTexts)
{
    story.Write("a.c", "\nint a;\n");
    EXPECT_TRUE(Set("a\ta.c\t1;\"\tv\nmade\ta.c\t1;\"\tv\nb\tb.c\t4;\"\tv\n").empty());
    EXPECT_EQ(AnswerFor(workspace.Current(), "a"), "a: a.c:1 in");
    ASSERT_TRUE(workspace.Project()->Update({}, cancel));
    EXPECT_EQ(AnswerFor(workspace.Current(), "a"), "a: a.c:2 in a.c");
    EXPECT_EQ(AnswerFor(workspace.Current(), "made"), "made: a.c:1 in") << "a macro may have made it";
    ASSERT_TRUE(workspace.SetOpenText(story.Path("b.c"), "int b;\n"));
    EXPECT_EQ(AnswerFor(workspace.Current(), "b"), "b: b.c:1 in b.c");
}

TEST_F(TagsOfWorkspace, ThatCannotBeReadAreReportedAndTheOthersCount)
{
    const std::string good = story.Write("good/tags", "a\t../a.c\t1;\"\tv\n");
    const std::string text = story.Write("text", "This is not a tags file.\nNot at all.\n");
    const std::string missing = story.Path("missing");
    const Workspace::TagsProblems problems = workspace.SetTagsFiles({missing, good, text}, cancel);
    ASSERT_EQ(problems.size(), 2u);
    EXPECT_EQ(problems[0].first, missing);
    EXPECT_NE(problems[0].second.find("cannot read"), std::string::npos);
    EXPECT_NE(problems[1].second.find("not a tags file"), std::string::npos);
    EXPECT_EQ(AnswerFor(workspace.Current(), "a"), "a: a.c:1 in");
    EXPECT_TRUE(workspace.SetTagsFiles({}, cancel).empty());
    EXPECT_EQ(AnswerFor(workspace.Current(), "a"), "a: in");
}

TEST_F(TagsOfWorkspace, AreReadAgainWhenTheyHaveChanged)
{
    EXPECT_TRUE(Set("a\ta.c\t1;\"\tv\n").empty());
    const SnapshotPointer before = workspace.Current();
    EXPECT_TRUE(workspace.RefreshTagsFiles(cancel).empty());
    EXPECT_EQ(workspace.Current(), before);
    story.Write("tags", "a\ta.c\t1;\"\tv\nb\tb.c\t22;\"\tv\n");
    EXPECT_TRUE(workspace.RefreshTagsFiles(cancel).empty());
    EXPECT_EQ(AnswerFor(workspace.Current(), "b"), "b: b.c:22 in");
    story.Remove("tags");
    EXPECT_EQ(workspace.RefreshTagsFiles(cancel).size(), 1u);
    EXPECT_EQ(AnswerFor(workspace.Current(), "b"), "b: in");
}

TEST_F(TagsOfWorkspace, KnowObjectiveC)
{
    EXPECT_TRUE(Set("Shape\ts.m\t1;\"\tX\nmoveTo:y:\ts.m\t3;\"\to\tclass:Shape\n").empty());
    EXPECT_EQ(Only("Shape").kind, SymbolKind::Interface);
    EXPECT_EQ(Only("moveTo:y:").kind, SymbolKind::InstanceMethod);
    EXPECT_EQ(Only("moveTo:y:").scope, "Shape");
}

} // namespace symbols
