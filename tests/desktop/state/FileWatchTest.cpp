#include "wren/desktop/state/FileWatch.h"

#include "tests/support/TempDirectory.h"
#include "wren/core/TextFile.h"

#include <QSignalSpy>

#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

wren::FileMark MarkOf(const std::string& file)
{
    const std::optional<base::FileIdentity> stamp = base::FileIdentity::At(file);
    return {stamp, wren::DigestOf(file, stamp)};
}

constexpr int kLimit = 20'000; // milliseconds; for a machine that is busy

class FileWatch : public ::testing::Test {
protected:
    FileWatch()
    {
        const auto telling = [this](const char* what) {
            return [this, what](long document) {
                if (document == kMark)
                    marked = true;
                else
                    told.push_back(what + std::to_string(document));
            };
        };
        QObject::connect(&watch, &wren::FileWatch::Changed, telling("changed "));
        QObject::connect(&watch, &wren::FileWatch::Gone, telling("gone "));
        QObject::connect(&watch, &wren::FileWatch::CameBack, telling("back "));
        watch.Watch(kMark, mark, MarkOf(mark));
    }
    std::string Watched(long document, const std::string& leaf, const std::string& text)
    {
        const std::string file = directory.Write(leaf, text);
        watch.Watch(document, file, MarkOf(file));
        return file;
    }

    // What is told of what has happened so far: another file changes now, and is told of with it or later.
    std::vector<std::string> Told()
    {
        std::ofstream(mark, std::ios::app) << "x";
        marked = false;
        QSignalSpy changed(&watch, &wren::FileWatch::Changed);
        while (!marked)
            if (!changed.wait(kLimit))
                return {"nothing within the limit"};
        return std::exchange(told, {});
    }

    static constexpr long kMark = 99;
    const TempDirectory directory;
    const TempDirectory elsewhere;
    const std::string mark = elsewhere.Write("mark", "");
    wren::FileWatch watch;
    std::vector<std::string> told;
    bool marked = false;
};

// A different time for each, however fast they come.
void Touch(const std::string& file)
{
    static long second = 1'000'000;
    const struct timespec times[2] = {{++second, 0}, {second, 0}};
    EXPECT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
}

} // namespace

TEST_F(FileWatch, ReportsAChangeOnce)
{
    Watched(1, "a.c", "old");
    Watched(2, "b.c", "old");
    EXPECT_THAT(Told(), IsEmpty());
    directory.Write("a.c", "new text");
    EXPECT_THAT(Told(), ElementsAre("changed 1"));
    EXPECT_THAT(Told(), IsEmpty());
    directory.Write("a.c", "new text again");
    EXPECT_THAT(Told(), ElementsAre("changed 1"));
}

TEST_F(FileWatch, ReportsAChangeOfTheSameSize)
{
    Touch(Watched(1, "a.c", "old"));
    const std::string file = directory.Write("a.c", "new");
    Touch(file);
    EXPECT_THAT(Told(), ElementsAre("changed 1"));
}

TEST_F(FileWatch, ReportsAChangeBetweenReadingAndWatching)
{
    const std::string file = directory.Write("a.c", "old");
    const std::optional<base::FileIdentity> stamp = base::FileIdentity::At(file);
    directory.Write("a.c", "new text");
    watch.Watch(1, file, {stamp, ""});
    EXPECT_THAT(Told(), ElementsAre("changed 1"));
}

TEST_F(FileWatch, FollowsAFileReplacedByARename)
{
    const std::string file = Watched(1, "a.c", "old");
    for (const char* text : {"first", "second text", "third"}) {
        fs::rename(directory.Write("temporary", text), file);
        EXPECT_THAT(Told(), ElementsAre("changed 1")) << text;
    }
    std::ofstream(file, std::ios::app) << "and written into";
    EXPECT_THAT(Told(), ElementsAre("changed 1"));
}

TEST_F(FileWatch, FollowsAFileWhoseOldVersionBecomesABackup)
{
    const std::string file = Watched(1, "a.c", "old");
    fs::rename(file, file + "~");
    directory.Write("a.c", "new text");
    EXPECT_THAT(Told(), ElementsAre("changed 1"));
    std::ofstream(file + "~", std::ios::app) << "nobody's";
    EXPECT_THAT(Told(), IsEmpty());
    std::ofstream(file, std::ios::app) << "more";
    EXPECT_THAT(Told(), ElementsAre("changed 1"));
}

TEST_F(FileWatch, DoesNotReportOwnSaves)
{
    const std::string file = Watched(1, "a.c", "old");
    std::string error;
    ASSERT_TRUE(wren::WriteWholeFile(file, "saved by the editor", &error)) << error;
    watch.Saved(1, MarkOf(file));
    EXPECT_THAT(Told(), IsEmpty());
    directory.Write("a.c", "changed by another");
    EXPECT_THAT(Told(), ElementsAre("changed 1")) << "the new file is followed";
}

TEST_F(FileWatch, IgnoresTouchesAndRewritesOfTheSameContent)
{
    const std::string file = Watched(1, "a.c", "text");
    Touch(file);
    EXPECT_THAT(Told(), IsEmpty());
    ASSERT_EQ(::chmod(file.c_str(), 0600), 0);
    EXPECT_THAT(Told(), IsEmpty());
    fs::rename(directory.Write("temporary", "text"), file);
    EXPECT_THAT(Told(), IsEmpty());
    directory.Write("a.c", "other");
    EXPECT_THAT(Told(), ElementsAre("changed 1"));
}

TEST_F(FileWatch, ReportsAFileThatVanishesAndComesBack)
{
    const std::string file = Watched(1, "a.c", "text");
    fs::remove(file);
    EXPECT_THAT(Told(), ElementsAre("gone 1"));
    EXPECT_THAT(Told(), IsEmpty());
    directory.Write("a.c", "text");
    EXPECT_THAT(Told(), ElementsAre("back 1"));
    fs::remove(file);
    EXPECT_THAT(Told(), ElementsAre("gone 1"));
    directory.Write("a.c", "other text");
    EXPECT_THAT(Told(), ElementsAre("back 1", "changed 1"));
}

TEST_F(FileWatch, FindsAFileWhoseDirectoryVanishedAndCameBack)
{
    const std::string file = Watched(1, "sub/deep/a.c", "text");
    fs::rename(directory / "sub", directory / "other");
    EXPECT_THAT(Told(), ElementsAre("gone 1"));
    fs::rename(directory / "other", directory / "sub");
    EXPECT_THAT(Told(), ElementsAre("back 1"));
    fs::remove_all(directory / "sub");
    EXPECT_THAT(Told(), ElementsAre("gone 1"));
    directory.Write("sub/deep/a.c", "text");
    EXPECT_THAT(Told(), ElementsAre("back 1"));
}

TEST_F(FileWatch, FollowsALinkToItsTarget)
{
    const TempDirectory target;
    target.Write("real.c", "old");
    const std::string link = directory / "link.c";
    fs::create_symlink(target / "real.c", link);
    watch.Watch(1, link, MarkOf(link));
    fs::rename(target.Write("temporary", "new text"), target / "real.c");
    EXPECT_THAT(Told(), ElementsAre("changed 1"));
    fs::remove(target / "real.c");
    EXPECT_THAT(Told(), ElementsAre("gone 1"));
    target.Write("real.c", "new text");
    EXPECT_THAT(Told(), ElementsAre("back 1"));
}

TEST_F(FileWatch, WaitsForAMissingFile)
{
    const std::string file = directory / "a.c";
    watch.Watch(1, file, {});
    EXPECT_THAT(Told(), IsEmpty());
    directory.Write("a.c", "text");
    EXPECT_THAT(Told(), ElementsAre("back 1", "changed 1"));
}

TEST_F(FileWatch, IsSilentAboutUnwatchedFiles)
{
    const std::string file = Watched(1, "a.c", "old");
    watch.Unwatch(1);
    watch.Unwatch(1);
    watch.Saved(1, MarkOf(file));
    directory.Write("a.c", "new text");
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(FileWatch, TakesTheNewestFileOfADocument)
{
    Watched(1, "a.c", "old");
    Watched(1, "b.c", "old");
    directory.Write("a.c", "new text");
    EXPECT_THAT(Told(), IsEmpty());
    directory.Write("b.c", "new text");
    EXPECT_THAT(Told(), ElementsAre("changed 1"));
}

TEST_F(FileWatch, LetsAListenerCloseTheDocument)
{
    const std::string file = Watched(1, "a.c", "old");
    QObject::connect(&watch, &wren::FileWatch::CameBack, [this](long document) { watch.Unwatch(document); });
    fs::remove(file);
    EXPECT_THAT(Told(), ElementsAre("gone 1"));
    directory.Write("a.c", "new text");
    Told();
    directory.Write("a.c", "newer text still");
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(FileWatch, ChecksOnRequest)
{
    Watched(1, "a.c", "old");
    directory.Write("a.c", "new text");
    watch.Check();
    EXPECT_THAT(told, ElementsAre("changed 1")) << "at once";
}
