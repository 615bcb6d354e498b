// A text in the files of a directory.
#include "wren/search/FilesSearch.h"

#include "tests/support/TempDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sys/stat.h>

namespace wren {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Lines = std::vector<std::string>;

class FilesSearch : public testing::Test {
protected:
    FilesSearch() { query.root = tree.Path(); }

    Lines Find(const std::string& text)
    {
        query.text.text = text;
        Lines lines;
        const auto sink = [&](const FoundInFile& found) {
            for (const FoundLine& each : found.lines)
                lines.push_back(found.path + ":" + std::to_string(each.line) + ":" + std::to_string(each.column) +
                                ": " + each.source.substr(0, each.matchStart) + "[" +
                                each.source.substr(each.matchStart, each.matchSize) + "]" +
                                each.source.substr(each.matchStart + each.matchSize));
        };
        base::Result<FilesFound> result = SearchFiles(query, open, sink, cancel);
        std::ranges::sort(lines);
        if (!result)
            return {result.Failure().Message()};
        found = *result;
        return lines;
    }

    const TempDirectory tree;
    FilesQuery query;
    OpenTexts open;
    base::CancelToken cancel;
    FilesFound found;
};

struct Case {
    const char* why;
    TextQuery query;
    const char* text;
    std::vector<std::string> matches;
};

} // namespace

TEST(TextPatterns, Find)
{
    const Case kCases[] = {
        {"a text", {"a.b"}, "axb a.b A.B", {"a.b", "A.B"}},
        {"with its case", {"a.b", false, true}, "axb a.b A.B", {"a.b"}},
        {"an expression", {"a.b", true}, "axb a.b", {"axb", "a.b"}},
        {"whole words", {"get", false, false, true}, "get getter forget get_x (get)", {"get", "get"}},
        {"words of an expression", {"g|x", true, false, true}, "g gx x", {"g", "x"}},
        {"ends of lines", {"^.$", true}, "a\nbc\nd", {"a", "d"}},
        {"a letter of several bytes", {"\u00e9"}, "\u00c9 \u00e9", {"\u00c9", "\u00e9"}},
        {"any letter", {"a.c", true}, "a\u20acc", {"a\u20acc"}},
        {"in a damaged text",
         {"b.", true},
         "a\xff"
         "bc\xfe",
         {"bc"}},
        {"no empty match", {"x*", true}, "axxb", {"xx"}},
        {"what an expression would take for its own", {"(*[\\Q"}, "f(*[\\Q", {"(*[\\Q"}},
        {"over lines", {"a\\nb", true}, "a\nb", {"a\nb"}},
    };
    for (const Case& each : kCases) {
        const base::Result<TextPattern> pattern = TextPattern::Compile(each.query);
        ASSERT_TRUE(pattern) << each.why;
        TextPattern::Finder finder(*pattern);
        const std::string_view text = each.text;
        std::vector<std::string> matches;
        for (auto match = finder.Next(text, 0); match; match = finder.Next(text, match->start + match->size))
            matches.emplace_back(text.substr(match->start, match->size));
        EXPECT_EQ(matches, each.matches) << each.why;
    }
}

TEST(TextPatterns, SayWhatIsWrong)
{
    const base::Result<TextPattern> pattern = TextPattern::Compile({"a(b", true});
    ASSERT_FALSE(pattern);
    EXPECT_THAT(pattern.Failure().Message(), HasSubstr("the expression is wrong at character 4: missing closing"));
}

TEST(TextPatterns, GiveUpWhatTakesTooLong)
{
    const base::Result<TextPattern> pattern = TextPattern::Compile({"(a+)+$", true});
    TextPattern::Finder finder(*pattern);
    EXPECT_FALSE(finder.Next(std::string(60, 'a') + "b", 0));
    EXPECT_TRUE(finder.HasGivenUp());
    EXPECT_TRUE(finder.Next("aaa", 0));
}

TEST_F(FilesSearch, ShowsTheLineAndThePlace)
{
    tree.Write("a.c", "int one;\nint two, twos;\r\n");
    tree.Write("sub/notes.txt", "Two");
    EXPECT_THAT(Find("two"),
                ElementsAre("a.c:2:10: int two, [two]s;", "a.c:2:5: int [two], twos;", "sub/notes.txt:1:1: [Two]"));
    EXPECT_EQ(found.files, 2u);
    EXPECT_FALSE(found.more);
}

TEST_F(FilesSearch, PassesOverWhatIsIgnoredAndWhatIsNoText)
{
    tree.Write(".wrenignore", "made/\n");
    tree.Write("made/a.c", "word\n");
    tree.Write("picture", std::string("word\0word", 9));
    tree.Write("a.c", "word\n");
    std::filesystem::create_symlink("a.c", tree / "link.c");
    std::filesystem::create_directory_symlink(".", tree / "again");
    ASSERT_EQ(::mkfifo((tree / "pipe").c_str(), 0600), 0);
    EXPECT_THAT(Find("word"), ElementsAre("a.c:1:1: [word]"));
}

TEST_F(FilesSearch, TakesTheFilesThatGlobsSay)
{
    for (const char* name : {"a.c", "a.h", "src/b.c", "src/deep/c.c", "doc/d.txt"})
        tree.Write(name, "x");
    const struct {
        std::vector<std::string> globs;
        std::vector<std::string> files;
    } kCases[] = {
        {{"*.c"}, {"a.c", "src/b.c", "src/deep/c.c"}},
        {{"*.c", "*.h"}, {"a.c", "a.h", "src/b.c", "src/deep/c.c"}},
        {{"src"}, {"src/b.c", "src/deep/c.c"}},
        {{"!src/"}, {"a.c", "a.h", "doc/d.txt"}},
        {{"src/*.c", "!deep"}, {"src/b.c"}},
        {{"", "# no pattern"}, {"a.c", "a.h", "doc/d.txt", "src/b.c", "src/deep/c.c"}},
    };
    for (const auto& each : kCases) {
        query.globs = each.globs;
        Lines files;
        for (const std::string& line : Find("x"))
            files.push_back(line.substr(0, line.find(':')));
        EXPECT_EQ(files, each.files) << each.globs[0];
    }
}

TEST_F(FilesSearch, OpenTextsCountInsteadOfTheirFiles)
{
    tree.Write("a.c", "old\n");
    open[tree / "a.c"] = std::make_shared<const std::string>("new\n");
    EXPECT_THAT(Find("old"), IsEmpty());
    EXPECT_THAT(Find("new"), ElementsAre("a.c:1:1: [new]"));
}

TEST_F(FilesSearch, EndsAtTheLimitAndSaysSo)
{
    for (int i = 0; i < 20; i++)
        tree.Write("f" + std::to_string(i), "x x x\n");
    query.limit = 10;
    EXPECT_EQ(Find("x").size(), 10u);
    EXPECT_TRUE(found.more);
    query.limit = 100;
    EXPECT_EQ(Find("x").size(), 60u);
    EXPECT_FALSE(found.more);
}

TEST_F(FilesSearch, ShowsWhatIsAroundAMatchInALongLine)
{
    tree.Write("a.js", std::string(100'000, 'a') + "needle" + std::string(100'000, 'b'));
    const Lines lines = Find("needle");
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_THAT(lines[0], HasSubstr("a.js:1:100001: aaa"));
    EXPECT_THAT(lines[0], HasSubstr("a[needle]b"));
    EXPECT_LT(lines[0].size(), 2100u);
}

TEST_F(FilesSearch, LeavesOutFilesThatAreTooLarge)
{
    tree.Write("holes", "");
    std::filesystem::resize_file(tree / "holes", 1ull << 40);
    tree.Write("a.c", "x");
    EXPECT_EQ(Find("x").size(), 1u);
    EXPECT_EQ(found.tooLarge, 1u);
}

TEST_F(FilesSearch, FailsWithAReason)
{
    EXPECT_THAT(Find(""), ElementsAre("there is nothing to search for"));
    query.root = tree / "absent";
    EXPECT_THAT(Find("x"), ElementsAre(HasSubstr("cannot read")));
    query.root = tree.Path();
    cancel.Cancel();
    EXPECT_THAT(Find("x"), ElementsAre("cancelled"));
}

} // namespace wren
