// wren index.
#include "tests/cli/symbols/SymbolsFixture.h"
#include "tests/support/Fifo.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::Not;

namespace {

class IndexCommand : public SymbolCommands {};

} // namespace

TEST_F(IndexCommand, MakesAnIndexAndThenParsesOnlyWhatHasChanged)
{
    const std::string start = "index of " + tree / "project" + ": ";
    const ProgramRun first = Run({"index"});
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.errors, "");
    EXPECT_THAT(first.output, MatchesRegex(start + "3 files, [0-9]+ symbols; 3 files parsed in .* s\n"));
    tree.Write("project/more.c", "int more;\n");
    EXPECT_THAT(Run({"index"}).output, MatchesRegex(start + "4 files, [0-9]+ symbols; 1 file parsed in .* s\n"));
    fs::remove(tree / "project/more.c");
    EXPECT_THAT(Run({"index"}).output,
                MatchesRegex(start + "3 files, [0-9]+ symbols; 0 files parsed, 1 removed in .* s\n"));
}

TEST_F(IndexCommand, ADirectoryStandsForItsProject)
{
    tree.Write("project/deep/x.c", "int x;\n");
    EXPECT_THAT(Run({"index", "deep"}).output, HasSubstr("index of " + tree / "project" + ":"));
}

TEST_F(IndexCommand, WritesOnlyIntoTheUsersCache)
{
    const auto listing = [this] {
        return RunProgram({"/bin/ls", "-lR", "--time-style=full-iso", tree / "project", tree / "home"}, "/").output;
    };
    const std::string before = listing();
    Run({"index"});
    EXPECT_EQ(listing(), before);
    for (const fs::directory_entry& each : fs::directory_iterator(tree / "cache/declaration"))
        EXPECT_EQ(each.status().permissions() & (fs::perms::group_all | fs::perms::others_all), fs::perms::none)
            << each.path();
}

TEST_F(IndexCommand, StatusPrintsWhatTheIndexHolds)
{
    const ProgramRun none = Run({"index", "--status"});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.errors, "wren: there is no index of " + tree / "project" + "\n");
    EXPECT_FALSE(fs::exists(tree / "cache"));
    Run({"index"});
    const ProgramRun some = Run({"index", "--status"});
    EXPECT_EQ(some.status, 0) << some.errors;
    EXPECT_THAT(some.output, HasSubstr("index of " + tree / "project" + "\nfiles: 3\nsymbols: "));
    EXPECT_THAT(some.output, HasSubstr("\ndirectory: " + tree / "cache/declaration/"));
}

TEST_F(IndexCommand, RemoveLeavesNothing)
{
    Run({"index"});
    EXPECT_EQ(Run({"index", "--remove"}).status, 0);
    EXPECT_EQ(Run({"index", "--status"}).status, 1);
    EXPECT_EQ(Run({"index", "--remove"}).status, 1);
}

TEST_F(IndexCommand, AnImportedIndexLeavesOnlyChangedFilesToParse)
{
    const std::string file = tree / "exported";
    const ProgramRun exported = Run({"index", "--export", file});
    EXPECT_EQ(exported.status, 0) << exported.errors;
    EXPECT_THAT(exported.output, HasSubstr("\nexported to " + file + "\n"));
    fs::rename(tree / "project", tree / "other");
    const auto runThere = [this](const std::vector<std::string>& words) {
        return RunProgram(Command(words), tree / "other", Environment());
    };
    tree.Write("other/main.cpp", "int New();\n");
    const ProgramRun imported = runThere({"index", "--import", file});
    EXPECT_EQ(imported.status, 0) << imported.errors;
    EXPECT_THAT(imported.output, HasSubstr("3 files, "));
    EXPECT_THAT(imported.output, HasSubstr("; 1 file parsed"));
    EXPECT_EQ(runThere({"find", "New"}).output, "main.cpp:1: prototype New()\n");
}

TEST_F(IndexCommand, RefusesFilesThatAreNotExported)
{
    Run({"index"});
    for (const char* file : {"main.cpp", "gone", "."}) {
        const ProgramRun run = Run({"index", "--import", file});
        EXPECT_EQ(run.status, 1) << file;
        EXPECT_NE(run.errors, "") << file;
    }
    EXPECT_EQ(Run({"find", "Twice"}).status, 0) << "the index is as before";
    EXPECT_EQ(Run({"index", "--export", tree / "no/such/directory"}).status, 1);
}

TEST_F(IndexCommand, WatchesUntilInterrupted)
{
    const Fifo output;
    const int descriptor = ::open(output.Path().c_str(), O_WRONLY | O_CLOEXEC);
    RunningProgram program(Command({"index", "--watch"}), tree / "project", Environment(), descriptor);
    ::close(descriptor);
    EXPECT_THAT(output.ReadLine(program.Process()), HasSubstr("3 files"));
    tree.Write("project/more.c", "int more;\n");
    EXPECT_EQ(output.ReadLine(program.Process()), "1 file parsed");
    EXPECT_EQ(Run({"find", "more"}).output, "more.c:1: variable more\n");
    ::kill(program.Process(), SIGTERM);
    EXPECT_EQ(program.Wait().signal, SIGTERM);
}

TEST_F(IndexCommand, RefusesUnknownArguments)
{
    for (const std::vector<std::string>& words : {std::vector<std::string>{"index", "nowhere"},
                                                  {"index", "main.cpp"},
                                                  {"index", "--status", "--remove"},
                                                  {"index", "--watch", "--status"},
                                                  {"index", "--remove", "--import", "x"},
                                                  {"index", ".", "."}}) {
        const ProgramRun run = Run(words);
        EXPECT_EQ(run.status, 2) << words.back();
        EXPECT_EQ(run.output, "") << words.back();
    }
}

TEST_F(IndexCommand, FailsWithoutCtags)
{
    std::map<std::string, std::string> environment = Environment();
    environment["CPLUSTAGS_CTAGS"] = tree / "none";
    const ProgramRun run = RunProgram(Command({"index"}), tree / "project", environment);
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.errors, HasSubstr("CPLUSTAGS_CTAGS"));
}

namespace {

// A ctags that waits until it is ended, and says when it runs.
class InterruptedIndex : public SymbolCommands {
protected:
    InterruptedIndex()
    {
        const std::string script = "#!/bin/sh\ncase \"$*\" in *--version) exec ctags-universal --version ;; esac\n"
                                   "echo runs >" +
                                   ShellWord(started.Path()) + "\nexec sleep 1000\n";
        fs::permissions(tree.Write("slow", script), fs::perms::owner_all);
    }

    std::map<std::string, std::string> WithSlowCtags() const
    {
        std::map<std::string, std::string> environment = Environment();
        environment["CPLUSTAGS_CTAGS"] = tree / "slow";
        return environment;
    }

    const Fifo started;
};

} // namespace

TEST_F(InterruptedIndex, EndsByTheSignalAndLeavesTheOldIndex)
{
    Run({"index"});
    tree.Write("project/more.c", "int more;\n");
    RunningProgram program(Command({"index"}), tree / "project", WithSlowCtags());
    ASSERT_EQ(started.ReadLine(program.Process()), "runs");
    ::kill(program.Process(), SIGINT);
    const ProgramRun run = program.Wait();
    EXPECT_EQ(run.signal, SIGINT) << run.errors;
    EXPECT_THAT(Run({"index", "--status"}).output, HasSubstr("files: 3\n"));
}

TEST_F(InterruptedIndex, KeepsWhatAFirstRunHasParsed)
{
    RunningProgram program(Command({"index"}), tree / "project", WithSlowCtags());
    ASSERT_EQ(started.ReadLine(program.Process()), "runs");
    ::kill(program.Process(), SIGINT);
    const ProgramRun run = program.Wait();
    EXPECT_EQ(run.signal, SIGINT) << run.errors;
    EXPECT_THAT(run.errors, HasSubstr("what was parsed is kept for the next run"));
    EXPECT_EQ(Run({"index", "--status"}).status, 1);
    EXPECT_EQ(Run({"index"}).status, 0);
    EXPECT_THAT(Run({"index", "--status"}).output, HasSubstr("files: 3\n"));
}

TEST_F(InterruptedIndex, IsShownByItsStatusWhileItRuns)
{
    RunningProgram making(Command({"index"}), tree / "project", WithSlowCtags());
    ASSERT_EQ(started.ReadLine(making.Process()), "runs");
    const ProgramRun none = Run({"index", "--status"});
    EXPECT_EQ(none.status, 1);
    const std::string running =
        "an update is running \\(process " + std::to_string(making.Process()) + ", since 20.*\\)\n";
    EXPECT_THAT(none.errors, MatchesRegex("wren: there is no index of .*/project yet; " + running));
    ::kill(making.Process(), SIGKILL);
    making.Wait();
    EXPECT_THAT(Run({"index", "--status"}).errors, Not(HasSubstr("running")));
    Run({"index"});
    EXPECT_THAT(Run({"index", "--status"}).output, Not(HasSubstr("activity")));
    tree.Write("project/more.c", "int more;\n");
    RunningProgram updating(Command({"index"}), tree / "project", WithSlowCtags());
    ASSERT_EQ(started.ReadLine(updating.Process()), "runs");
    EXPECT_THAT(Run({"index", "--status"}).output, HasSubstr("\nactivity: an update is running (process " +
                                                             std::to_string(updating.Process()) + ", since "));
}
