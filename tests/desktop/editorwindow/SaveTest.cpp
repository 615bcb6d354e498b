#include "tests/desktop/editorwindow/EditorStory.h"

#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

class Saving : public EditorStory {
protected:
    void StartWith(const std::string& path, const std::string& text = "old\n")
    {
        file = home.Write(path, text);
        Start({file});
    }
    // The text is as it was typed, still to be saved, and what could not be done was said, with the reason.
    void ExpectRefused(const std::string& typed, const char* reason)
    {
        const std::vector<std::string> heard = hands.TakeHeard();
        ASSERT_FALSE(heard.empty());
        EXPECT_THAT(heard.back(), AllOf(HasSubstr(file), HasSubstr(reason)));
        EXPECT_EQ(Text(), typed);
        EXPECT_THAT(CurrentTab(), EndsWith(" *"));
    }
    mode_t Mode() const
    {
        struct stat status = {};
        ::stat(file.c_str(), &status);
        return status.st_mode & 07777;
    }
    long LeftOvers() const
    {
        long count = 0;
        for (const fs::directory_entry& entry : fs::directory_iterator(fs::path(file).parent_path()))
            count += entry.path().filename().string().starts_with(".wren-");
        return count;
    }
    std::string file;
};

// No file may grow beyond that many bytes while it lives: as when a disk is full. It is for the test's own log as well.
class SmallFilesOnly {
public:
    explicit SmallFilesOnly(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &before);
        const rlimit small = {bytes, before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallFilesOnly() { ::setrlimit(RLIMIT_FSIZE, &before); }

private:
    rlimit before = {};
};

} // namespace

TEST_F(Saving, FailsWithoutItsDirectoryAndSucceedsOnceItIsBack)
{
    StartWith("source/a.c");
    Type("new ");
    fs::remove_all(home / "source");
    hands.AnswerNextAlert("OK");
    Press("Ctrl+S");
    ExpectRefused("new old\n", "No such file or directory");

    fs::create_directory(home / "source");
    Press("Ctrl+S");
    EXPECT_EQ(Content(file), "new old\n");
    EXPECT_THAT(Tabs(), ElementsAre("a.c"));
    hands.TakeHeard();
    Press("Ctrl+W");
    EXPECT_THAT(hands.TakeHeard(), IsEmpty()) << "nothing is left to be saved";
}

TEST_F(Saving, FailsWithADirectoryInPlaceOfTheFile)
{
    StartWith("a.c");
    Type("new ");
    fs::remove(file);
    fs::create_directory(file);
    hands.AnswerNextAlert("Yes"); // another program has changed it
    hands.AnswerNextAlert("OK");
    Press("Ctrl+S");
    ExpectRefused("new old\n", "Is a directory");
    EXPECT_TRUE(fs::is_directory(file));
}

TEST_F(Saving, LeavesTheOldFileWholeWhenItFailsHalfWay)
{
    std::string old;
    for (int line = 0; line < 50'000; ++line)
        old += std::string(99, 'o') + '\n';
    StartWith("a.c", old);
    Type("new ");
    {
        const SmallFilesOnly disk(4'000'000);
        hands.AnswerNextAlert("OK");
        Press("Ctrl+S");
        EXPECT_THAT(hands.TakeHeard(), ElementsAre(AllOf(HasSubstr(file), HasSubstr("File too large"))));
    }
    EXPECT_TRUE(Text() == "new " + old);
    EXPECT_THAT(Tabs(), ElementsAre("a.c *"));
    EXPECT_TRUE(Content(file) == old);
    EXPECT_EQ(LeftOvers(), 0) << "no half of the new one";
    Press("Ctrl+S");
    EXPECT_TRUE(Content(file) == "new " + old);
}

TEST_F(Saving, KeepsTheTextOpenWhenItFailsWhileClosing)
{
    StartWith("source/a.c");
    Type("new ");
    fs::remove_all(home / "source");
    hands.AnswerNextAlert("Save");
    hands.AnswerNextAlert("OK");
    EXPECT_FALSE(Quit());
    ExpectRefused("new old\n", "No such file or directory");
}

TEST_F(Saving, KeepsTheFilesPermissions)
{
    for (const mode_t mode : {0755, 0640, 0600}) {
        StartWith("a.c");
        ::chmod(file.c_str(), mode);
        Type("new ");
        Press("Ctrl+S");
        EXPECT_EQ(Content(file), "new old\n");
        EXPECT_EQ(Mode(), mode);
    }
}

// Root may write to any file.
TEST_F(Saving, LeavesAReadOnlyFileUnchanged)
{
    StartWith("a.c");
    ::chmod(file.c_str(), 0444);
    Type("new ");
    if (::geteuid() == 0) {
        Press("Ctrl+S");
        EXPECT_EQ(Content(file), "new old\n");
    } else {
        hands.AnswerNextAlert("OK");
        Press("Ctrl+S");
        ExpectRefused("new old\n", "Permission denied");
        EXPECT_EQ(Content(file), "old\n");
    }
    EXPECT_EQ(Mode(), mode_t{0444});
}

TEST_F(Saving, WritesThroughALinkAndKeepsTheLink)
{
    const std::string target = home.Write("shared/a.c", "old\n");
    fs::create_symlink("shared/a.c", home / "link.c");
    Start({home / "link.c"});
    Type("new ");
    Press("Ctrl+S");
    EXPECT_TRUE(fs::is_symlink(home / "link.c"));
    EXPECT_EQ(fs::read_symlink(home / "link.c"), "shared/a.c");
    EXPECT_EQ(Content(target), "new old\n");
    EXPECT_THAT(Tabs(), ElementsAre("link.c"));
}

TEST_F(Saving, StopsAtTheFirstTextThatCannotBeSaved)
{
    const std::string good = home.Write("good.c", "old\n");
    StartWith("source/a.c");
    TheEditor().Actions().documents.Open(good);
    Type("new ");
    Press("Ctrl+PgUp");
    Type("new ");
    fs::remove_all(home / "source");
    hands.AnswerNextAlert("OK");
    Choose("File", "Save All");
    ExpectRefused("new old\n", "No such file or directory");
    EXPECT_THAT(Tabs(), ElementsAre("a.c *", "good.c *"));
}
