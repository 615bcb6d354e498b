#include "wren/desktop/state/WorksheetRunner.h"

#include "tests/support/TempDirectory.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

using ::testing::HasSubstr;

namespace {

constexpr int kLimit = 20'000; // milliseconds; for a machine that is busy

class WorksheetRunner : public ::testing::Test {
protected:
    WorksheetRunner()
    {
        QObject::connect(runner.get(), &wren::WorksheetRunner::Output, [this](const QByteArray& bytes) {
            EXPECT_EQ(ended.count(), 0) << "nothing comes after the end";
            output += bytes.toStdString();
        });
    }
    void Run(const std::string& lines)
    {
        output.clear();
        ended.clear();
        EXPECT_TRUE(runner->Run(lines, directory.Path()));
    }
    int Status()
    {
        EXPECT_TRUE(ended.count() == 1 || ended.wait(kLimit));
        EXPECT_FALSE(runner->IsRunning());
        return ended.count() == 1 ? ended.at(0).at(0).toInt() : -1;
    }
    bool WasStopped() const { return ended.at(0).at(1).toBool(); }

    // Waits until the lines have written that.
    void Expect(const std::string& text)
    {
        QSignalSpy more(runner.get(), &wren::WorksheetRunner::Output);
        while (output.find(text) == std::string::npos)
            ASSERT_TRUE(more.wait(kLimit)) << output;
    }

    const TempDirectory directory;
    std::unique_ptr<wren::WorksheetRunner> runner = std::make_unique<wren::WorksheetRunner>();
    QSignalSpy ended{runner.get(), &wren::WorksheetRunner::Ended};
    std::string output;
};

bool IsAlive(pid_t process)
{
    return ::kill(process, 0) == 0;
}

} // namespace

TEST_F(WorksheetRunner, RunsLinesInTheirDirectory)
{
    Run("pwd\necho second");
    EXPECT_TRUE(runner->IsRunning());
    EXPECT_EQ(Status(), 0);
    EXPECT_FALSE(WasStopped());
    EXPECT_EQ(output, directory.Path() + "\nsecond\n");
}

TEST_F(WorksheetRunner, PassesOutputAndErrorsOnInOrderAsBytes)
{
    Run("echo a; echo b >&2; printf 'c\\000\\377'; echo '\xfe'");
    EXPECT_EQ(Status(), 0);
    EXPECT_EQ(output, std::string("a\nb\nc\0\xff\xfe\n", 9));
}

TEST_F(WorksheetRunner, ReportsTheStatus)
{
    const struct {
        const char* why;
        const char* lines;
        int status;
    } kCases[] = {
        {"its own", "exit 3", 3},
        {"of the last command", "false", 1},
        {"of an unknown command", "wren-does-not-exist", 127},
        {"of a signal", "kill -9 $$", 128 + 9},
        {"a syntax error", "if", 2},
        {"nothing to do", "", 0},
    };
    for (const auto& each : kCases) {
        Run(each.lines);
        EXPECT_EQ(Status(), each.status) << each.why;
        EXPECT_FALSE(WasStopped()) << each.why;
    }
}

TEST_F(WorksheetRunner, GivesLinesNoInput)
{
    Run("cat; read answer || echo none");
    EXPECT_EQ(Status(), 0);
    EXPECT_EQ(output, "none\n");
}

TEST_F(WorksheetRunner, StreamsOutputWhileItRuns)
{
    Run("mkfifo gate; echo first; read line < gate; echo $line");
    Expect("first\n");
    EXPECT_TRUE(runner->IsRunning());
    directory.Write("gate", "second\n");
    EXPECT_EQ(Status(), 0);
    EXPECT_EQ(output, "first\nsecond\n");
}

TEST_F(WorksheetRunner, PassesAllOfALargeOutputOn)
{
    Run("head -c 3000000 /dev/zero | tr '\\000' x");
    EXPECT_EQ(Status(), 0);
    EXPECT_EQ(output, std::string(3'000'000, 'x'));
}

TEST_F(WorksheetRunner, RunsOneCommandAtATime)
{
    Run("echo ready; sleep 1000");
    EXPECT_FALSE(runner->Run("echo other", directory.Path()));
    Expect("ready\n");
    runner->Stop();
    Status();
    EXPECT_EQ(output, "ready\n");
}

TEST_F(WorksheetRunner, StopsTheWholeGroup)
{
    Run("sleep 1000 & echo $!; wait; sleep 1000");
    Expect("\n");
    const pid_t child = std::stoi(output);
    EXPECT_TRUE(IsAlive(child));
    QElapsedTimer taken;
    taken.start();
    runner->Stop();
    EXPECT_EQ(Status(), 128 + SIGTERM);
    EXPECT_TRUE(WasStopped());
    EXPECT_LT(taken.elapsed(), 1900) << "without having to be made to";
    runner.reset();
}

TEST_F(WorksheetRunner, KillsACommandThatIgnoresTheStop)
{
    Run("trap '' TERM; echo ready; while true; do sleep 1000; done");
    Expect("ready\n");
    QElapsedTimer taken;
    taken.start();
    runner->Stop();
    runner->Stop();
    EXPECT_EQ(Status(), 128 + SIGKILL);
    EXPECT_TRUE(WasStopped());
    EXPECT_GE(taken.elapsed(), 1900);
}

TEST_F(WorksheetRunner, EndsChildrenThatOutliveTheShell)
{
    Run("(trap '' TERM; echo $(exec sh -c 'echo $PPID'); exec 3> life; while true; do sleep 1000; done) & mkfifo gate; "
        "read x < gate");
    Expect("\n");
    const pid_t child = std::stoi(output);
    runner->Stop();
    EXPECT_EQ(Status(), 128 + SIGTERM);
    EXPECT_TRUE(IsAlive(child)) << "it has two seconds";
    Run("echo next");
    EXPECT_EQ(Status(), 0) << "and a new run does not wait for it";
    QElapsedTimer limit;
    limit.start();
    QSignalSpy none(runner.get(), &wren::WorksheetRunner::Output);
    while (IsAlive(child) && limit.elapsed() < kLimit)
        none.wait(20);
    EXPECT_FALSE(IsAlive(child));
}

TEST_F(WorksheetRunner, StopsTheCommandWhenItDies)
{
    Run("trap '' TERM; echo $$; while true; do sleep 1000; done");
    Expect("\n");
    const pid_t shell = std::stoi(output);
    runner.reset();
    EXPECT_FALSE(IsAlive(shell));
}

TEST_F(WorksheetRunner, ReportsAMissingDirectory)
{
    EXPECT_TRUE(runner->Run("echo never", directory / "gone"));
    EXPECT_EQ(Status(), 126);
    EXPECT_EQ(output, "wren: cannot go to " + (directory / "gone") + ": No such file or directory\n");
}

TEST_F(WorksheetRunner, ReportsLinesThatAreTooLong)
{
    Run("# " + std::string(1'000'000, 'x'));
    EXPECT_EQ(Status(), 126);
    EXPECT_THAT(output, HasSubstr("Argument list too long"));
}

TEST(LinesToRun, Cases)
{
    const struct {
        const char* why;
        const char* marked; // a caret is "|", a selection "[" "]"
        const char* lines;
    } kCases[] = {
        {"the caret's line", "one\ntw|o\nthree", "two"},
        {"at its beginning", "one\n|two\nthree", "two"},
        {"at its end", "one\ntwo|\nthree", "two"},
        {"the first", "|one\ntwo", "one"},
        {"the last", "one\ntwo|", "two"},
        {"an empty line", "one\n|\nthree", ""},
        {"nothing", "|", ""},
        {"behind the last line break", "one\n|", ""},
        {"a part of a line", "one\nt[w]o\nthree", "two"},
        {"parts of two lines", "on[e\nt]wo\nthree", "one\ntwo"},
        {"whole lines", "[one\ntwo\n]three", "one\ntwo"},
        {"a line break alone", "one[\n]two", "one"},
        {"everything", "[one\ntwo]", "one\ntwo"},
        {"to the end of an unselected line", "one\n[two\nthree]\nfour", "two\nthree"},
    };
    for (const auto& each : kCases) {
        std::string text = each.marked;
        const bool isCaret = text.find('|') != std::string::npos;
        const long start = static_cast<long>(text.find(isCaret ? '|' : '['));
        text.erase(start, 1);
        const long end = isCaret ? start : static_cast<long>(text.find(']'));
        if (!isCaret)
            text.erase(end, 1);
        const wren::LineRange range = wren::LinesToRun(text, start, end);
        EXPECT_EQ(text.substr(range.start, range.end - range.start), each.lines) << each.why;
        EXPECT_EQ(wren::LinesToRun(text, end, start).start, range.start) << each.why;
    }
    const wren::LineRange beyond = wren::LinesToRun("one", -5, 50);
    EXPECT_EQ(beyond.start, 0);
    EXPECT_EQ(beyond.end, 3);
}
