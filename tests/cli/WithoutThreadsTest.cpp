// The commands when the system starts no thread: work without threads is done, and other work fails with a message.
#include "tests/support/NoThreads.h"
#include "tests/support/RunProgram.h"
#include "tests/support/TempDirectory.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

class CommandWithoutThreads : public ::testing::Test {
protected:
    CommandWithoutThreads()
    {
        tree.Write("a.c", "int once;\nint twice;\nint on\nint twi\n");
        tree.Write("b.c", "int twice; // more than nine bytes\n");
        tree.Write("tags", "once\ta.c\t1;\"\tv\ntwice\ta.c\t2;\"\tv\ntwice\tb.c\t1;\"\tv\ntwicer\tb.c\t1;\"\tv\n");
        tree.Write("home/.keep", "");
    }
    void SetUp() override
    {
        if (!WithoutThreads({}))
            GTEST_SKIP() << "threads cannot be refused to a program here (setpriv, prlimit)";
    }
    ProgramRun Run(const std::vector<std::string>& words)
    {
        std::vector<std::string> command = {WREN_PROGRAM};
        command.insert(command.end(), words.begin(), words.end());
        return RunProgram(*WithoutThreads(command), tree.Path(), Environment());
    }
    std::map<std::string, std::string> Environment() const
    {
        return {{"HOME", tree / "home"}, {"XDG_CACHE_HOME", tree / "cache"}};
    }
    // With threads, for the user without.
    void MakeIndex() const
    {
        const ProgramRun run = RunProgram({WREN_PROGRAM, "index"}, tree.Path(), Environment());
        ASSERT_EQ(run.status, 0) << run.errors;
        if (::getuid() != 0)
            return;
        EXPECT_EQ(::chown((tree / "cache").c_str(), kSomebodyElse, kSomebodyElse), 0);
        for (const auto& each : std::filesystem::recursive_directory_iterator(tree / "cache"))
            EXPECT_EQ(::chown(each.path().c_str(), kSomebodyElse, kSomebodyElse), 0) << each.path();
    }

    const TempDirectory tree;
};

const std::string kNoWindow =
    "wren: the system starts no more threads (Resource temporarily unavailable): a window is not shown\n";

} // namespace

TEST_F(CommandWithoutThreads, LookupPrintsAllMatches)
{
    const struct {
        std::vector<std::string> question;
        std::string output;
    } kCases[] = {
        {{"a.c:1:5"}, tree / "a.c:1: once - a.c\n"},
        {{"a.c:2:5"}, tree / "a.c:2: twice - a.c\n" + tree / "b.c:1: twice - b.c\n"},
        {{"--symbol", "twice"}, tree / "a.c:2: twice - a.c\n" + tree / "b.c:1: twice - b.c\n"},
    };
    for (const auto& each : kCases) {
        std::vector<std::string> words = {"lookup"};
        words.insert(words.end(), each.question.begin(), each.question.end());
        const ProgramRun run = Run(words);
        EXPECT_EQ(run.status, 0) << each.question.back() << ": " << run.errors;
        EXPECT_EQ(run.output, each.output) << each.question.back();
        EXPECT_EQ(run.errors, "") << each.question.back();
    }
}

TEST_F(CommandWithoutThreads, LookupReportsThatNothingMatches)
{
    const ProgramRun run = Run({"lookup", "a.c:4:5"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_THAT(run.errors, HasSubstr("nothing in the tags files matches")) << "which is certain";
}

TEST_F(CommandWithoutThreads, CompletePrintsASingleCompletion)
{
    const ProgramRun run = Run({"complete", "a.c:3"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, "once\n");
}

TEST_F(CommandWithoutThreads, CompletePrintsCandidates)
{
    const ProgramRun run = Run({"complete", "a.c:2:10"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.output, "twice\ntwicer\n");
    EXPECT_EQ(run.errors, "");
}

TEST_F(CommandWithoutThreads, CompleteWhileTypingFailsWithAReason)
{
    const ProgramRun typing = Run({"complete", "a.c:4", "--auto"});
    EXPECT_EQ(typing.status, 2);
    EXPECT_EQ(typing.output, "");
    EXPECT_THAT(typing.errors, HasSubstr("work in the background is put off until it is asked for again\n"));
    EXPECT_THAT(typing.errors, HasSubstr("wren: the candidates cannot be listed without another thread\n"));
}

TEST_F(CommandWithoutThreads, AnIndexIsNotMadeWhichIsReported)
{
    const ProgramRun run = Run({"index"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_THAT(run.errors, HasSubstr("wren: cannot start "));
    EXPECT_EQ(RunProgram({WREN_PROGRAM, "index", "--status"}, tree.Path(), Environment()).status, 1);
}

TEST_F(CommandWithoutThreads, AnOldIndexAnswersAndTheUserLearnsThatItMayBeStale)
{
    MakeIndex();
    for (const std::vector<std::string>& words :
         std::vector<std::vector<std::string>>{{"find", "twice"}, {"definition", "a.c:2:5", "--no-system"}}) {
        const ProgramRun run = Run(words);
        EXPECT_EQ(run.status, 0) << words[0] << ": " << run.errors;
        EXPECT_THAT(run.output, HasSubstr("twice")) << words[0];
        EXPECT_THAT(run.errors, HasSubstr("changed files are not noticed")) << words[0];
        EXPECT_THAT(run.errors, HasSubstr("answers may be stale")) << words[0];
    }
    EXPECT_EQ(Run({"index"}).status, 1);
    EXPECT_EQ(Run({"find", "twice"}).status, 0) << "a failed update leaves the index";
}

TEST_F(CommandWithoutThreads, ScriptAnswersEachLine)
{
    const std::string session = tree.Write("session", "{\"do\": \"document\", \"path\": \"" + tree / "a.c" + "\"}\n" +
                                                          "{\"do\": \"select\", \"start\": 14, \"end\": 14}\n" +
                                                          "{\"do\": \"command\", \"name\": \"SymbolLookup\"}\n" +
                                                          "{\"do\": \"state\", \"id\": \"the last\"}\n");
    const std::string program = WREN_PROGRAM;
    const ProgramRun run =
        RunProgram(*WithoutThreads({"/bin/sh", "-c", "exec \"$0\" script <\"$1\"", program, session}), tree.Path(),
                   {{"HOME", tree / "home"}});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.errors, kNoWindow);
    EXPECT_THAT(run.output, HasSubstr("the last")) << "after the lookup whose list has no thread";
}
