#include "wren/core/GuardedRunner.h"

#include "tests/support/Fifo.h"
#include "tests/support/FileContent.h"
#include "tests/support/TempDirectory.h"
#include "vetch/support/ShellEscape.h"

#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <future>
#include <gtest/gtest.h>
#include <mutex>
#include <sstream>
#include <thread>
#include <unistd.h>

namespace wren {
namespace {

namespace fs = std::filesystem;

constexpr const char* kOld = "old\told.h\t1;\"\tv\n";
constexpr const char* kNew = "new\tnew.h\t1;\"\tv\n";
constexpr std::chrono::seconds kLimit(60);

class GuardedRunnerTest : public testing::Test {
protected:
    GuardedRunnerTest()
    {
        tree.Write("tags", kOld);
        tree.Write("a.h", "int a;");
    }

    GuardedRunner::News News()
    {
        GuardedRunner::News news;
        news.ended = [this](const TagsOutcome& outcome) { Add([&] { outcomes.push_back(outcome); }); };
        news.stale = [this](const StaleTags& each) { Add([&] { stale.push_back(each); }); };
        return news;
    }

    void Add(const std::function<void()>& adding)
    {
        const std::lock_guard guard(mutex);
        adding();
    }

    // The shell line that makes the tags; the script has to write "$t".
    std::string MakeLine(const std::string& script) const
    {
        return "t=" + EscapedPath(tree.Path()) + "/tags.tmp; find " + EscapedPath(tree.Path()) +
               " | { cat >/dev/null; " + script + "; } # -f " + EscapedPath(tree.Path()) + "/tags.tmp -L -\n";
    }
    std::string MoveLine() const { return "mv " + EscapedPath(tree / "tags.tmp") + " " + EscapedPath(tree / "tags"); }

    // One request, in the plug-in's way: every line, even after a failed one.
    void Ask(const std::string& script, const vetch::ShellRequest& request = {}) const
    {
        vetch::RunShellCommand(MakeLine(script).c_str(), request);
        vetch::RunShellCommand(MoveLine().c_str(), request);
    }

    std::string Tags() const { return Content(tree / "tags"); }
    static std::string Writes() { return "printf 'new\\tnew.h\\t1;\"\\tv\\n' >\"$t\""; }

    const TempDirectory tree;
    std::mutex mutex;
    std::vector<TagsOutcome> outcomes;
    std::vector<StaleTags> stale;
};

using Kind = TagsOutcome::Kind;

TEST_F(GuardedRunnerTest, MovesNewTagsIntoPlace)
{
    GuardedRunner runner(STDERR_FILENO, News());
    Ask(Writes());
    EXPECT_EQ(Tags(), kNew);
    EXPECT_EQ(outcomes.at(0).kind, Kind::Made);
    EXPECT_TRUE(outcomes.at(0).hadFile);
    EXPECT_FALSE(fs::exists(tree / "tags.tmp"));
    EXPECT_FALSE(fs::exists(tree / ".tags.lock"));
}

TEST_F(GuardedRunnerTest, MovesNothingAfterAFailedLine)
{
    GuardedRunner runner(STDERR_FILENO, News());
    for (const std::string& script : {Writes() + "; exit 3", std::string("true")}) {
        Ask(script);
        EXPECT_EQ(Tags(), kOld) << script;
        EXPECT_EQ(outcomes.back().kind, Kind::Failed) << script;
        EXPECT_NE(outcomes.back().problem, "") << script;
        EXPECT_FALSE(fs::exists(tree / "tags.tmp")) << script;
    }
}

TEST_F(GuardedRunnerTest, DoesNotTakeOldFilesForItsOwn)
{
    GuardedRunner runner(STDERR_FILENO, News());
    tree.Write("tags.tmp", kNew);
    Ask("true");
    EXPECT_EQ(Tags(), kOld) << "a leftover of years ago";
    EXPECT_FALSE(fs::exists(tree / "tags.tmp")) << "it goes with the next run";
    tree.Write("tags.tmp", "a list of mine\n");
    Ask(Writes());
    EXPECT_EQ(outcomes.back().kind, Kind::Refused);
    EXPECT_EQ(Content(tree / "tags.tmp"), "a list of mine\n");
    EXPECT_EQ(Tags(), kOld);
}

TEST_F(GuardedRunnerTest, RefusesAFileNamedTagsThatIsNotATagsFile)
{
    GuardedRunner runner(STDERR_FILENO, News());
    tree.Write("tags", "milk\nbread\n");
    Ask(Writes());
    EXPECT_EQ(outcomes.back().kind, Kind::Refused);
    EXPECT_NE(outcomes.back().problem.find(tree / "tags is not a tags file"), std::string::npos);
    EXPECT_EQ(Tags(), "milk\nbread\n");
    fs::remove(tree / "tags");
    fs::create_directory(tree / "tags");
    Ask(Writes());
    EXPECT_TRUE(fs::is_empty(tree / "tags")) << "a directory does not get the temporary moved into it";
}

TEST_F(GuardedRunnerTest, GivesCommandsNoInputAndNoTerminal)
{
    GuardedRunner runner(STDERR_FILENO, News());
    Ask("readlink /proc/$$/fd/0 >" + EscapedPath(tree / "input") + "; (: </dev/tty) 2>/dev/null && echo tty >" +
        EscapedPath(tree / "input") + "; " + Writes());
    EXPECT_EQ(Content(tree / "input"), "/dev/null\n");
    EXPECT_EQ(Tags(), kNew);
}

TEST_F(GuardedRunnerTest, MergesRequestsForTheSameTags)
{
    GuardedRunner runner(STDERR_FILENO, News());
    const Fifo began;
    const Fifo goOn;
    auto first = std::async(std::launch::async, [&] {
        Ask("echo run >>" + EscapedPath(tree / "runs") + "; echo begun >" + EscapedPath(began.Path()) +
            "; read line <" + EscapedPath(goOn.Path()) + "; " + Writes());
    });
    ASSERT_EQ(began.ReadLine(::getpid()), "begun");
    for (int request = 0; request < 14; ++request)
        Ask("echo run >>" + EscapedPath(tree / "runs") + "; " + Writes());
    EXPECT_EQ(Tags(), kOld);
    EXPECT_EQ(runner.Running(), std::vector<std::string>{tree / "tags"});
    goOn.WriteLine("go on");
    first.get();
    EXPECT_EQ(Tags(), kNew);
    EXPECT_EQ(Content(tree / "runs"), "run\n");
    EXPECT_EQ(outcomes.size(), 1u);
}

TEST_F(GuardedRunnerTest, StopsTheWholeGroupAndCleansUp)
{
    const Fifo began;
    const Fifo never;
    std::future<void> run;
    {
        GuardedRunner runner(STDERR_FILENO, News());
        run = std::async(std::launch::async, [&] {
            Ask(Writes() + "; sh -c 'echo $$ >\"" + began.Path() + "\"; read line <\"" + never.Path() + "\"'");
        });
        const pid_t deep = std::stoi(began.ReadLine(::getpid()));
        runner.Stop(SIGTERM);
        EXPECT_TRUE(runner.WaitUntilIdle(kLimit));
        EXPECT_NE(::kill(deep, 0), 0) << "what the shell has started ends with it";
        EXPECT_EQ(outcomes.at(0).kind, Kind::Interrupted);
        EXPECT_FALSE(fs::exists(tree / "tags.tmp"));
        EXPECT_FALSE(fs::exists(tree / ".tags.lock"));
    }
    run.get();
    EXPECT_EQ(Tags(), kOld);
}

TEST_F(GuardedRunnerTest, RefusesLinesAfterItsDeath)
{
    {
        const GuardedRunner runner(STDERR_FILENO, {});
    }
    Ask("echo run >>" + EscapedPath(tree / "runs") + "; " + Writes());
    EXPECT_FALSE(fs::exists(tree / "runs"));
    EXPECT_EQ(Tags(), kOld);
    vetch::SetShellRunner(nullptr);
}

TEST_F(GuardedRunnerTest, MayEndAtAnyMoment)
{
    {
        const GuardedRunner first(STDERR_FILENO, {}); // from now on no line reaches the system's shell
    }
    std::atomic<bool> ends = false;
    std::vector<std::future<void>> plugins;
    for (int thread = 0; thread < 3; ++thread)
        plugins.push_back(std::async(std::launch::async, [&] {
            while (!ends)
                Ask(Writes());
        }));
    for (int life = 0; life < 10; ++life) {
        std::promise<void> called; // by the first line that the runner receives
        std::once_flag once;
        GuardedRunner::News news;
        news.runs = [&](const std::string&) { std::call_once(once, [&] { called.set_value(); }); };
        GuardedRunner runner(STDERR_FILENO, std::move(news));
        called.get_future().wait();
    }
    ends = true;
    for (std::future<void>& each : plugins)
        each.get();
    EXPECT_TRUE(Tags() == kOld || Tags() == kNew);
    EXPECT_FALSE(fs::exists(tree / "tags.tmp"));
    EXPECT_FALSE(fs::exists(tree / ".tags.lock"));
    vetch::SetShellRunner(nullptr);
}

TEST_F(GuardedRunnerTest, ReportsStaleTagsAndRebuildsThemOnRequest)
{
    GuardedRunner runner(STDERR_FILENO, News());
    fs::create_directory(tree / "linked");
    fs::create_symlink("../tags", tree / "linked/tags");
    Ask(Writes(), {tree / "linked/tags", tree / "a.h"});
    EXPECT_EQ(Tags(), kOld);
    ASSERT_EQ(stale.size(), 1u);
    EXPECT_EQ(stale[0].file, tree / "tags");
    EXPECT_EQ(stale[0].newer, tree / "a.h");
    EXPECT_TRUE(runner.Rebuild(stale[0]));
    EXPECT_TRUE(runner.WaitUntilIdle(kLimit));
    EXPECT_EQ(Tags(), kNew);
}

TEST_F(GuardedRunnerTest, RebuildsAutomaticallyOnceForTheSameTagsAndSource)
{
    GuardedRunner runner(STDERR_FILENO, News());
    const vetch::ShellRequest request{tree / "tags", tree / "a.h"};
    const std::string fails = "echo run >>" + EscapedPath(tree / "runs") + "; exit 1";
    Ask(fails, request);
    Ask(fails, request);
    EXPECT_EQ(Content(tree / "runs"), "run\n") << "it failed, and so it would again";
    EXPECT_EQ(stale.size(), 1u);
    Ask(fails);
    EXPECT_EQ(Content(tree / "runs"), "run\nrun\n") << "but the user may try";
}

} // namespace
} // namespace wren
