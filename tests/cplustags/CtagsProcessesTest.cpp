// A ctags that is missing, crashes, hangs, fails or is killed. Stand-ins do so for certain names.

#include "tests/cplustags/Workspace.h"
#include "tests/support/Fifo.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>

namespace {

namespace fs = std::filesystem;
using Words = Workspace::Words;

constexpr const char* kOldTags = "old\told.c\t1;\"\tf\n";

class CtagsProcesses : public testing::Test {
protected:
    // Empty sources; stand-ins only look at their names.
    Words Sources(const Words& leaves)
    {
        for (const std::string& leaf : leaves)
            work.Write(leaf, "");
        return leaves;
    }

    // "s100.c", "s101.c" and so on.
    Words ManySources(int count)
    {
        Words leaves;
        for (int number = 0; number < count; ++number)
            leaves.push_back("s" + std::to_string(100 + number) + ".c");
        return Sources(leaves);
    }

    static Words TagsOf(const Words& leaves)
    {
        Words tags;
        for (const std::string& leaf : leaves)
            tags.push_back("in_" + leaf.substr(0, leaf.size() - 2) + " " + leaf + " 1;\" f");
        return tags;
    }

    // The run fails with 'words' in its message, and leaves everything unchanged.
    void ExpectFailure(const ProgramRun& run, const std::string& words)
    {
        EXPECT_EQ(run.status, 1) << run.errors;
        EXPECT_NE(run.errors.find(words), std::string::npos) << run.errors;
        EXPECT_EQ(work.Content("out/tags"), kOldTags);
        EXPECT_EQ(work.Leaves("out"), Words{"tags"}) << "there is no litter";
    }

    ProgramRun RunOverOldTags(Words words)
    {
        work.Write("out/tags", kOldTags);
        words.insert(words.begin(), {"-f", "out/tags"});
        return work.Run(words);
    }

    Workspace work;
};

TEST_F(CtagsProcesses, MissingCtagsIsReportedWithItsPackage)
{
    fs::create_directory(work / "empty");
    work.environment["PATH"] = work / "empty";
    const ProgramRun run = RunOverOldTags(Sources({"a.c"}));
    ExpectFailure(run, "universal-ctags");
    EXPECT_NE(run.errors.find("sudo apt install universal-ctags"), std::string::npos) << run.errors;
}

TEST_F(CtagsProcesses, TheChosenCtagsMustBeAProgram)
{
    work.Write("text", "no program");
    for (const char* chosen : {"/none/ctags", "none", "./text", "/"}) {
        work.environment["CPLUSTAGS_CTAGS"] = chosen;
        ExpectFailure(RunOverOldTags(Sources({"a.c"})), std::string("CPLUSTAGS_CTAGS is '") + chosen + "'");
    }
}

TEST_F(CtagsProcesses, TheChosenCtagsMayBeRelative)
{
    work.UseStandIn("");
    work.environment["CPLUSTAGS_CTAGS"] = "stand-in/ctags";
    work.Write("out/s.c", "");
    EXPECT_EQ(work.Run({"-f", "out/tags", "out/s.c"}).status, 0) << "though it runs in another directory";
    EXPECT_EQ(work.Tags("out/tags"), Words{"in_s s.c 1;\" f"});
}

TEST_F(CtagsProcesses, APlainCtagsIsUsedWhenItIsUniversal)
{
    const std::string standIn = StandInForCtags("");
    const std::string afterShell = standIn.substr(standIn.find('\n') + 1);
    work.environment["PATH"] = work / "bin:/usr/bin:/bin";
    const Words sources = Sources({"a.c"});
    // The usual directories may contain a real ctags, so the search path must not include them.
    fs::create_directory(work / "bin");
    for (const char* program : {"sh", "basename"})
        fs::create_symlink(std::string("/usr/bin/") + program, work / "bin/" + program);
    work.environment["PATH"] = work / "bin";
    work.WriteProgram("bin/ctags",
                      "#!/bin/sh\n[ \"$2\" != --version ] || { echo 'Universal Ctags 6.0'; exit; }\n" + afterShell);
    EXPECT_EQ(work.Run(sources).status, 0);
    EXPECT_EQ(work.Tags(), TagsOf(sources));
    work.WriteProgram("bin/ctags", "#!/bin/sh\necho 'Exuberant Ctags 5.8'\n");
    ExpectFailure(RunOverOldTags(sources), "universal-ctags");
}

TEST_F(CtagsProcesses, ACrashCostsOneFile)
{
    work.UseStandIn("*crash*) kill -SEGV $$;;\n*abort*) kill -ABRT $$;;\n");
    const ProgramRun run = work.Run([&] {
        Words words = Sources({"a.c", "b-crash.c", "c.c", "d-abort.c", "e-crash.c", "f.c"});
        words.insert(words.begin(), "--totals");
        return words;
    }());
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(work.Tags(), TagsOf({"a.c", "c.c", "f.c"}));
    for (const char* leaf : {"b-crash.c", "d-abort.c", "e-crash.c"})
        EXPECT_NE(run.errors.find("ctags crashed on " + work / leaf), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find("3 files, 3 tags, "), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find("; 3 files crashed ctags\n"), std::string::npos) << run.errors;
    EXPECT_EQ(work.Pseudo("CPLUSTAGS_FILES"), "3");
}

TEST_F(CtagsProcesses, ACrashInTheMiddleOfALineLosesNothingElse)
{
    work.UseStandIn("*crash*) printf 'half\\ta li'; kill -SEGV $$;;\n");
    EXPECT_EQ(work.Run(Sources({"a.c", "crash.c", "z.c"})).status, 0);
    EXPECT_EQ(work.Tags(), TagsOf({"a.c", "z.c"}));
}

TEST_F(CtagsProcesses, OldTagsOfAFileStayAfterACrash)
{
    work.UseStandIn("");
    const Words sources = Sources({"a.c", "crash.c"});
    ASSERT_EQ(work.Run(sources).status, 0);
    work.UseStandIn("*crash*) kill -SEGV $$;;\n");
    EXPECT_EQ(work.Run({"--append=yes", "a.c", "crash.c"}).status, 0);
    EXPECT_EQ(work.Tags(), TagsOf(sources));
}

TEST_F(CtagsProcesses, CrashesOnAllFilesAreAFailure)
{
    work.UseStandIn("*) kill -SEGV $$;;\n");
    ExpectFailure(RunOverOldTags(Sources({"a.c", "b.c", "c.c"})), "none of the sources could be tagged");
    work.environment["CPLUSTAGS_JOBS"] = "1";
    const ProgramRun run = RunOverOldTags(ManySources(100));
    ExpectFailure(run, "none of the first 20 sources could be tagged");
    EXPECT_EQ(run.errors.find("s120.c"), std::string::npos) << "it does not try them all";
}

// The limit allows for the other files on a loaded machine.
TEST_F(CtagsProcesses, AHangCostsOneFileAndEndsTheChildrenOfCtags)
{
    const Fifo pids;
    const Fifo forever;
    work.UseStandIn("*hang*) sh -c 'echo $$ >\"" + pids.Path() + "\"; read line <\"" + forever.Path() + "\"';;\n");
    work.environment["CPLUSTAGS_TIME_LIMIT"] = "3";
    Words words = Sources({"a.c", "b-hang.c", "c.c"});
    words.insert(words.begin(), "--totals");
    RunningProgram running(Workspace::Command(words), work.Path(), work.environment);
    const pid_t started = std::stoi(pids.ReadLine(running.Process()));
    const int end = static_cast<int>(::syscall(SYS_pidfd_open, started, 0));
    const ProgramRun run = running.Wait();
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(work.Tags(), TagsOf({"a.c", "c.c"}));
    EXPECT_NE(run.errors.find("ctags took longer than 3 s for " + work / "b-hang.c"), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find("; 1 file took too long\n"), std::string::npos) << run.errors;
    pollfd place = {end, POLLIN, 0};
    EXPECT_EQ(::poll(&place, 1, 10'000), 1);
    ::close(end);
}

TEST_F(CtagsProcesses, AnyOtherFailureFailsTheRun)
{
    const struct {
        const char* why;
        const char* branch;
        const char* words;
    } cases[] = {
        {"its own", "b.c) echo 'a disk is full' >&2; exit 3;;\n", "failed with status 3:\na disk is full\n"},
        {"its own, with commands for terminals", "b.c) printf 'a \\033[2J \\302\\233K\\nb\\n' >&2; exit 3;;\n",
         "failed with status 3:\na \\x1b[2J \\xc2\\x9bK\nb\n"},
        {"it ends too early", "b.c) exit 0;;\n", "ended before its work was done"},
        {"memory ran out", "b.c) kill -KILL $$;;\n", "was killed (Killed)"},
        {"somebody stopped it", "b.c) kill -TERM $$;;\n", "was killed (Terminated)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        // Names are relative to the directory of the tags file, or absolute.
        work.UseStandIn(std::string("*/") + c.branch);
        ExpectFailure(RunOverOldTags(Sources({"a.c", "b.c", "c.c"})), c.words);
    }
}

TEST_F(CtagsProcesses, ComplaintsOfCtagsAreShownOnlyWhenItFails)
{
    work.UseStandIn("*) echo \"warning: $name\" >&2;;\n");
    const ProgramRun run = work.Run(Sources({"a.c", "b.c"}));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
}

TEST_F(CtagsProcesses, EndlessComplaintsDoNotStopCtags)
{
    // More than a pipe holds; the message shows the end of it.
    work.UseStandIn("*a.c) i=0; while [ $i -lt 20000 ]; do echo 0123456789; i=$((i+1)); done >&2;;\n"
                    "*b.c) echo 'last words' >&2; exit 1;;\n");
    const ProgramRun run = RunOverOldTags(Sources({"a.c", "b.c"}));
    ExpectFailure(run, "\nlast words\n");
    EXPECT_LT(run.errors.size(), 10'000u);
}

// Lets the test wait for each start of a stand-in, and continue it once.
class Starts {
public:
    std::string Branches() const
    {
        return "*) if [ -z \"$started\" ]; then started=yes; echo start >'" + starts.Path() + "'; read line <'" +
               gate.Path() + "'; fi;;\n";
    }
    bool Wait(pid_t process) const { return starts.ReadLine(process) == "start"; }
    void LetOneGo() const { gate.WriteLine("go"); }

private:
    const Fifo starts;
    const Fifo gate;
};

TEST_F(CtagsProcesses, SeveralRunSideBySideWhenThereIsEnoughToDo)
{
    const Starts starts;
    work.UseStandIn(starts.Branches());
    work.environment["CPLUSTAGS_JOBS"] = "3";
    const Words sources = ManySources(200);
    RunningProgram running(Workspace::Command(sources), work.Path(), work.environment);
    for (int worker = 0; worker < 3; ++worker)
        ASSERT_TRUE(starts.Wait(running.Process())) << "none of them has ended, or tagged a file";
    for (int worker = 0; worker < 3; ++worker)
        starts.LetOneGo();
    EXPECT_EQ(running.Wait().status, 0);
    EXPECT_EQ(work.Tags(), TagsOf(sources));
}

TEST_F(CtagsProcesses, SmallJobsUseOneProcess)
{
    work.UseStandIn("*) if [ -z \"$started\" ]; then started=yes; echo >>'" + work / "starts" + "'; fi;;\n");
    work.environment["CPLUSTAGS_JOBS"] = "8";
    EXPECT_EQ(work.Run(ManySources(30)).status, 0);
    EXPECT_EQ(work.Content("starts"), "\n");
}

TEST_F(CtagsProcesses, TemporaryFilesOfCtagsAreRemoved)
{
    work.UseStandIn("*) echo half >\"$TMPDIR/tags.$$\"; echo \"$TMPDIR\" >'" + work / "place" + "';;\n");
    EXPECT_EQ(work.Run(Sources({"a.c"})).status, 0);
    std::string place = work.Content("place");
    place.pop_back();
    EXPECT_NE(place, "");
    EXPECT_FALSE(fs::exists(place));
}

class Interrupts : public CtagsProcesses {
protected:
    // Runs until ctags reaches a file that takes forever, then sends the signal. 'before' are words before the command.
    ProgramRun Interrupt(int signal, const Words& before = {})
    {
        work.UseStandIn("*forever*) echo $$ >'" + pids.Path() + "'; read line <'" + forever.Path() + "';;\n");
        work.Write("out/tags", kOldTags);
        Words command = before;
        for (const std::string& word : Workspace::Command({"-f", "out/tags", "a.c", "forever.c", "z.c"}))
            command.push_back(word);
        Sources({"a.c", "forever.c", "z.c"});
        RunningProgram running(command, work.Path(), work.environment);
        ctags = std::stoi(pids.ReadLine(running.Process()));
        ::kill(running.Process(), signal);
        if (!before.empty())
            forever.WriteLine("go on");
        return running.Wait();
    }

    const Fifo pids;
    const Fifo forever;
    pid_t ctags = 0;
};

TEST_F(Interrupts, LeaveTheOldFileAndNoLitter)
{
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        SCOPED_TRACE(::strsignal(signal));
        std::signal(signal, SIG_DFL); // a shell ignores some signals in background jobs
        const ProgramRun run = Interrupt(signal);
        EXPECT_EQ(run.signal, signal) << "it ends as whoever sent the signal expects";
        EXPECT_EQ(run.errors, "");
        EXPECT_EQ(work.Content("out/tags"), kOldTags);
        EXPECT_EQ(work.Leaves("out"), Words{"tags"});
        EXPECT_EQ(::kill(ctags, 0), -1) << "ctags is gone";
        EXPECT_EQ(errno, ESRCH);
    }
}

TEST_F(Interrupts, AreIgnoredIfTheyWereIgnoredAtTheStart)
{
    const ProgramRun run = Interrupt(SIGHUP, {"/usr/bin/nohup"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(work.Tags("out/tags").size(), 3u);
}

TEST_F(Interrupts, EndTheWaitForAList)
{
    const Fifo list;
    const Fifo pids;
    work.UseStandIn("*) echo at work >'" + pids.Path() + "';;\n");
    Sources({"a.c"});
    RunningProgram running(Workspace::Command({"-L", list.Path()}), work.Path(), work.environment);
    list.WriteLine("a.c");
    EXPECT_EQ(pids.ReadLine(running.Process()), "at work") << "while the list is open";
    ::kill(running.Process(), SIGTERM);
    EXPECT_EQ(running.Wait().signal, SIGTERM);
    EXPECT_FALSE(fs::exists(work / "tags"));
}

TEST_F(Interrupts, AKillOfTheProgramEndsCtagsToo)
{
    const ProgramRun run = Interrupt(SIGKILL);
    EXPECT_EQ(run.signal, SIGKILL);
    const int end = static_cast<int>(::syscall(SYS_pidfd_open, ctags, 0));
    pollfd place = {end, POLLIN, 0};
    EXPECT_TRUE(end < 0 || ::poll(&place, 1, 10'000) == 1);
    ::close(end);
    EXPECT_EQ(work.Content("out/tags"), kOldTags);
    work.UseStandIn("");
    EXPECT_EQ(work.Run({"-f", "out/tags", "a.c"}).status, 0);
    EXPECT_EQ(work.Leaves("out"), Words{"tags"}) << "the next run clears up";
}

} // namespace
