// "wren script" as a program: its input, its output and its end.
#include "tests/support/ShellWord.h"
#include "tests/support/TempDirectory.h"
#include "wren/core/Documents.h"

#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

const std::string kRecording = std::string(TEST_BUNDLES) + "/Recording.bundle";
const std::string kPrinting = std::string(TEST_BUNDLES) + "/Printing.bundle";

struct Ending {
    int status;
    std::string output;
    std::string errors;
};

class ScriptProcess : public ::testing::Test {
protected:
    // 'prefix' precedes the program: environment settings, limits.
    Ending Run(const std::string& arguments, const std::string& input, const std::string& prefix = "")
    {
        directory.Write("input", input);
        const std::string command = prefix + " " + ShellWord(WREN_PROGRAM) + " " + arguments + " < " +
                                    ShellWord(directory / "input") + " > " + ShellWord(directory / "output") + " 2> " +
                                    ShellWord(directory / "errors");
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Content("output"), Content("errors")};
    }
    std::string Script(const std::string& bundle) const
    {
        return "script --bundle " + ShellWord(bundle) + " --home " + ShellWord(home);
    }

    TempDirectory directory;
    const std::string home = directory / "home";

private:
    std::string Content(const std::string& leaf) const
    {
        std::string error;
        return wren::ReadWholeFile(directory / leaf, &error).value_or("(" + error + ")");
    }
};

} // namespace

TEST_F(ScriptProcess, SucceedsWhenEveryLineSucceeds)
{
    const Ending ending = Run(Script(kRecording), "{\"do\": \"pending\", \"on\": false}\n");
    EXPECT_EQ(ending.status, 0);
    EXPECT_EQ(ending.output, "{\"ok\":true,\"log\":[]}\n");
    EXPECT_EQ(ending.errors, "");
    EXPECT_TRUE(std::filesystem::is_directory(home + "/Library/Caches"));
}

TEST_F(ScriptProcess, SucceedsWithoutAnyLine)
{
    EXPECT_EQ(Run(Script(kRecording), "").status, 0);
}

TEST_F(ScriptProcess, ReadsALastLineWithoutALineBreak)
{
    EXPECT_EQ(Run(Script(kRecording), "{\"do\": \"pending\", \"on\": true}").output, "{\"ok\":true,\"log\":[]}\n");
}

TEST_F(ScriptProcess, ExitsWithOneAfterAFailedLineAndRunsTheRest)
{
    const Ending ending = Run(Script(kRecording), "nonsense\n{\"do\": \"pending\", \"on\": false}\n");
    EXPECT_EQ(ending.status, 1);
    EXPECT_THAT(ending.output, StartsWith("{\"ok\":false,\"error\":"));
    EXPECT_THAT(ending.output, EndsWith("\n{\"ok\":true,\"log\":[]}\n"));
}

TEST_F(ScriptProcess, ExitsWithTwoForWrongUsageOrABadBundle)
{
    directory.Write("Text.bundle/Contents/Linux/Declaration", "no library");
    const struct {
        const char* why;
        std::string arguments;
        std::string says;
    } kCases[] = {
        {"an unknown option", "script --dance", "--dance"},
        {"an option without its value", "script --home", "--home"},
        {"a stray word", "script word", "word"},
        {"no bundle", Script(directory / "None.bundle"), "no bundle directory " + (directory / "None.bundle")},
        {"no library", Script(directory / "Text.bundle"), "is not a library that can be loaded"},
        {"a symbol is missing", Script(std::string(TEST_BUNDLES) + "/WithoutHelp.bundle"),
         "lacks the symbol PluginHelp"},
    };
    for (const auto& each : kCases) {
        const Ending ending = Run(each.arguments, "{\"do\": \"state\"}\n");
        EXPECT_EQ(ending.status, 2) << each.why;
        EXPECT_EQ(ending.output, "") << each.why;
        EXPECT_THAT(ending.errors, HasSubstr(each.says)) << each.why;
    }
}

TEST_F(ScriptProcess, PrintsItsVersionAndUsage)
{
    EXPECT_THAT(Run("--version", "").output, StartsWith("wren "));
    const Ending help = Run("script --help", "");
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.output, HasSubstr("--settings"));
}

TEST_F(ScriptProcess, KeepsWhatThePluginAndItsChildrenPrintOutOfTheAnswers)
{
    const Ending ending = Run(Script(kPrinting), "{\"do\": \"command\", \"name\": \"x\"}\n");
    EXPECT_EQ(ending.output, "{\"ok\":true,\"returned\":1,\"log\":[]}\n");
    EXPECT_THAT(ending.errors, HasSubstr("the plug-in prints"));
    EXPECT_THAT(ending.errors, HasSubstr("a child prints"));
}

TEST_F(ScriptProcess, RunsWithoutAHomeAndWithAnUnwritableOne)
{
    const std::string line = "{\"do\": \"pending\", \"on\": false}\n";
    const Ending without = Run("script --bundle " + ShellWord(kRecording), line, "env -u HOME");
    EXPECT_EQ(without.status, 0);
    EXPECT_THAT(without.errors, HasSubstr("no home directory"));
    const Ending file = Run("script --bundle " + ShellWord(kRecording) + " --home /dev/null", line);
    EXPECT_EQ(file.status, 0);
    EXPECT_EQ(file.output, "{\"ok\":true,\"log\":[]}\n");
    EXPECT_THAT(file.errors, HasSubstr("cannot make /dev/null/Library/Caches"));
}

TEST_F(ScriptProcess, AnswersEachLineBeforeItReadsTheNext)
{
    int lines[2], answers[2];
    ASSERT_EQ(::pipe(lines), 0);
    ASSERT_EQ(::pipe(answers), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(lines[0], STDIN_FILENO);
        ::dup2(answers[1], STDOUT_FILENO);
        ::close(lines[1]);
        ::execl(WREN_PROGRAM, "wren", "script", "--bundle", kRecording.c_str(), "--home", home.c_str(), nullptr);
        ::_exit(127);
    }
    const std::string line = "{\"do\": \"pending\", \"on\": true}\n";
    const std::string expected = "{\"ok\":true,\"log\":[]}\n";
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(::write(lines[1], line.data(), line.size()), static_cast<ssize_t>(line.size()));
        std::string answer;
        for (char byte = 0; byte != '\n' && ::read(answers[0], &byte, 1) == 1;)
            answer += byte;
        EXPECT_EQ(answer, expected);
    }
    ::close(lines[1]);
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    for (const int descriptor : {lines[0], answers[0], answers[1]})
        ::close(descriptor);
}

TEST_F(ScriptProcess, PassesItsHomeToChildren)
{
    const Ending ending = Run(Script(kPrinting), "{\"do\": \"command\", \"name\": \"x\"}\n");
    EXPECT_THAT(ending.errors, HasSubstr("home " + home + "\n"));
}

// The plug-in answers 1 when it has learned how its child ended.
TEST_F(ScriptProcess, LetsThePluginWaitForItsChildren)
{
    for (const char* prefix : {"", "env --ignore-signal=CHLD"}) {
        const Ending ending = Run(Script(kPrinting), "{\"do\": \"command\", \"name\": \"x\"}\n", prefix);
        EXPECT_EQ(ending.output, "{\"ok\":true,\"returned\":1,\"log\":[]}\n") << prefix;
    }
}
