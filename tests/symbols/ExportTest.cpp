#include "tests/support/FileContent.h"
#include "tests/symbols/IndexStory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace symbols {

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

// An index of a few files, and its export.
class ExportStory : public IndexStory {
public:
    ExportStory()
    {
        for (const char* leaf : {"a", "b", "x/c"})
            Write(std::string(leaf) + ".c", std::string("int ") + std::string(leaf).back() + ";\n");
        Update();
        const base::Result<void> written = index->Export(File(), cancel);
        EXPECT_TRUE(written) << written.Failure().Message();
    }
    std::string File() const { return tree / "exported"; }
};

// The same tree in another place, with another cache.
class Elsewhere : public IndexStory {
public:
    explicit Elsewhere(const ExportStory& story) { fs::copy(story.top, top, fs::copy_options::recursive); }
};

std::string Outcome(const base::Result<void>& result)
{
    return result ? "done" : result.Failure().Message();
}

} // namespace

TEST(Export, SavesParsingTheSameTreeElsewhere)
{
    const ExportStory story;
    Elsewhere other(story);
    ASSERT_EQ(Outcome(other.index->Import(story.File(), other.cancel)), "done");
    EXPECT_EQ(other.AnswerFor("c"), "c: x/c.c:1 in x/c.c");
    const UpdateResult result = other.Update();
    EXPECT_FALSE(result.rebuilt);
    EXPECT_EQ(result.parsed, 0u);
    other.ExpectAsFresh();
}

TEST(Export, LeavesToTheNextUpdateWhatDiffers)
{
    const ExportStory story;
    Elsewhere other(story);
    other.Write("a.c", "int A;\n"); // as long as before
    other.Write("new.c", "int fresh;\n");
    other.Remove("x");
    ASSERT_EQ(Outcome(other.index->Import(story.File(), other.cancel)), "done");
    const UpdateResult result = other.Update();
    EXPECT_EQ(result.parsed, 2u);
    EXPECT_EQ(result.removed, 1u);
    other.ExpectAsFresh();
}

TEST(Export, ReplacesAnIndexThatIsThere)
{
    const ExportStory story;
    Elsewhere other(story);
    other.Write("old.c", "int old;\n");
    other.Update();
    const SnapshotPointer before = other.index->Current();
    ASSERT_EQ(Outcome(other.index->Import(story.File(), other.cancel)), "done");
    EXPECT_EQ(other.AnswerFor("old"), "old: in");
    EXPECT_EQ(AnswerFor(before, "old"), "old: old.c:1 in old.c") << "readers keep what they have";
    ASSERT_EQ(Outcome(other.index->Import(story.File(), other.cancel)), "done") << "twice";
    other.Update();
    other.ExpectAsFresh();
}

TEST(Export, ContainsNoPathOfTheMachine)
{
    const ExportStory story;
    EXPECT_EQ(Content(story.File()).find(story.top), std::string::npos);
    EXPECT_EQ(fs::status(story.File()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST(Export, FailsWithoutAnIndex)
{
    IndexStory story;
    EXPECT_THAT(Outcome(story.index->Export(story.tree / "exported", story.cancel)), HasSubstr("no usable index"));
    EXPECT_FALSE(fs::exists(story.tree / "exported"));
}

TEST(Export, LeavesNothingBesideAFileThatItCannotWrite)
{
    const ExportStory story;
    fs::create_directory(story.tree / "directory");
    EXPECT_NE(Outcome(story.index->Export(story.tree / "directory", story.cancel)), "done");
    EXPECT_THAT(NamesIn(story.tree.Path()), testing::ElementsAre("cache", "directory", "exported", "tree"));
}

TEST(Import, RefusesWhatOtherParsersHaveMade)
{
    const ExportStory story;
    IndexOptions options = OptionsFor(story.top, story.tree / "other");
    options.tagging.ctags.ignored = "MACRO";
    Index index(options);
    EXPECT_THAT(Outcome(index.Import(story.File(), story.cancel)), HasSubstr("other versions of the parsers"));
    EXPECT_EQ(index.Current(), nullptr);
}

TEST(Import, RefusesWhatIsNotAnIndex)
{
    const ExportStory story;
    const std::string other = story.tree.Write("other", "wrenexp?");
    const std::string before = DumpOf(story.index->Current());
    Index index(OptionsFor(story.top, story.Cache()));
    for (const std::string& file : {other, story.tree / "none", story.top, std::string("/dev/zero")})
        EXPECT_NE(Outcome(index.Import(file, story.cancel)), "done") << file;
    EXPECT_EQ(DumpOf(index.Current()), before);
}

TEST(Import, RefusesDamagedFilesAndKeepsTheIndex)
{
    ExportStory story;
    const std::string whole = Content(story.File());
    const std::string before = DumpOf(story.index->Current());
    const std::vector<std::string> files = NamesIn(story.index->Directory());
    const size_t step = whole.size() / 150 + 1;
    for (size_t at = 0; at < whole.size(); at += step) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x55);
        for (const std::string& text : {damaged, whole.substr(0, at)}) {
            story.tree.Write("damaged", text);
            EXPECT_NE(Outcome(story.index->Import(story.tree / "damaged", story.cancel)), "done") << at;
        }
    }
    story.tree.Write("damaged", whole + "x");
    EXPECT_NE(Outcome(story.index->Import(story.tree / "damaged", story.cancel)), "done");
    EXPECT_EQ(DumpOf(story.index->Current()), before);
    EXPECT_EQ(NamesIn(story.index->Directory()), files) << "nothing is left over";
}

} // namespace symbols
