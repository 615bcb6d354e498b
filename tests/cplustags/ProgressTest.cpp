#include "cplustags/Progress.h"

#include "cplustags/Summary.h"
#include "tests/support/Terminal.h"

#include <gtest/gtest.h>

namespace cplustags {
namespace {

TEST(Progress, DrawsALineThatIsErasedAtTheEnd)
{
    const Terminal terminal;
    {
        Progress progress(terminal.Program());
        progress.Show(3, 20);
        const std::string line = terminal.Written();
        EXPECT_EQ(line.rfind("\r\033[K3 of 20 files", 0), 0u) << line;
        EXPECT_EQ(line.find('\n'), std::string::npos);
    }
    EXPECT_EQ(terminal.Written(), "\r\033[K");
}

TEST(Progress, MessagesReplaceTheLine)
{
    const Terminal terminal;
    Progress progress(terminal.Program());
    progress.Say("early");
    EXPECT_EQ(terminal.Written(), "cplustags: early\n");
    progress.Show(3, 20);
    terminal.Written();
    progress.Say("late");
    EXPECT_EQ(terminal.Written(), "\r\033[Kcplustags: late\n");
    progress.Erase();
    EXPECT_EQ(terminal.Written(), "") << "there is no line any more";
}

TEST(Progress, IsDrawnTenTimesASecondAtMost)
{
    const Terminal terminal;
    Progress progress(terminal.Program());
    for (size_t done = 0; done < 10'000; ++done)
        progress.Show(done, 10'000);
    const std::string written = terminal.Written();
    EXPECT_LT(std::count(written.begin(), written.end(), '\r'), 100) << "ten times a second at most";
}

TEST(Progress, DrawsNothingWithoutATerminal)
{
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC | O_NONBLOCK), 0);
    {
        Progress progress(ends[1]);
        progress.Show(3, 20);
        progress.Say("message");
    }
    char text[100];
    const ssize_t size = ::read(ends[0], text, sizeof text);
    EXPECT_EQ(std::string(text, std::max<ssize_t>(0, size)), "cplustags: message\n");
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST(ProgressText, Cases)
{
    EXPECT_EQ(ProgressText(3, 20, 2), "3 of 20 files, 2 files/s");
    EXPECT_EQ(ProgressText(0, 1, 0.5), "0 of 1 file, 0 files/s");
    EXPECT_EQ(ProgressText(0, 0, 0), "0 of 0 files");
}

TEST(SummaryText, Cases)
{
    tagging::TaggingCounts counts;
    counts.files = 3;
    counts.tags = 120;
    EXPECT_EQ(SummaryText(counts, 0, {3, 120}, 0.12), "3 files, 120 tags, 0.1 s");
    EXPECT_EQ(SummaryText(counts, 0, {5, 200}, 2), "3 files, 120 tags, 2.0 s (in all 5 files, 200 tags)");
    counts.crashed = 1;
    counts.tookTooLong = 2;
    counts.tooLong = 1;
    EXPECT_EQ(SummaryText(counts, 0, {3, 120}, 0),
              "3 files, 120 tags, 0.0 s; 1 file crashed ctags, 2 took too long, 1 tag too long");
    counts = {};
    counts.files = 1;
    counts.tags = 1;
    counts.unreadable = 2;
    EXPECT_EQ(SummaryText(counts, 1, {1, 1}, 0),
              "1 file, 1 tag, 0.0 s; 2 files could not be read, 1 had a name that cannot be written");
}

TEST(TooLongText, NamesTheFilesWithTheMostLongTags)
{
    const auto name = [](unsigned file) { return std::string(1, static_cast<char>('a' + file)) + ".c"; };
    const struct {
        tagging::TagsByFile tooLong;
        const char* text;
    } cases[] = {
        {{{0, 1}}, "1 tag is left out, since readers reject lines that long: 1 of a.c"},
        {{{1, 7}}, "7 tags are left out, since readers reject lines that long: 7 of b.c"},
        {{{0, 1}, {1, 2}, {2, 1}},
         "4 tags are left out, since readers reject lines that long: 2 of b.c, 1 of a.c, 1 of c.c"},
        {{{0, 1}, {1, 2}, {2, 1}, {3, 5}},
         "9 tags are left out, since readers reject lines that long: 5 of d.c, 2 of b.c, 1 of a.c, and the rest of 1 "
         "other file"},
        {{{0, 1}, {1, 1}, {2, 1}, {3, 1}, {4, 1}},
         "5 tags are left out, since readers reject lines that long: 1 of a.c, 1 of b.c, 1 of c.c, and the rest of 2 "
         "other files"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(TooLongText(c.tooLong, name), c.text);
}

} // namespace
} // namespace cplustags
