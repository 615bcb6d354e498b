// Directories and programs with names that a shell might take for something else.
#include "generate/CreateTags.h"

#include "generate/TagTemplates.h"
#include "tests/generate/GenerateTest.h"
#include "tests/generate/RealShell.h"
#include "vetch/storage/BEntry.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

const std::string kNames[] = {
    "plain",
    "two  blanks ",
    "it's",
    "\"quoted\"",
    "one \" quote",
    "$(touch pwned)",
    "$(pwned)",
    "`pwned`",
    "a; pwned ;",
    "a && pwned",
    "a | pwned",
    "a & pwned",
    "a > pwned",
    "a < pwned",
    "-rf",
    "-",
    "--help",
    "new\nline",
    "\npwned\n",
    "\n# comment",
    "# comment",
    "(pwned)",
    "{pwned,touch}",
    "$HOME",
    "${HOME}",
    "~",
    "*",
    "[a-z]?",
    "!",
    "back\\slash\\",
    "\\$(pwned)",
    "=",
    "PATH=x",
    "\xff\xfe\xc3(",
    "caf\xc3\xa9",
    "tab\tbell\a",
    "$(LOCAL_HEADERS_WHERE)",
    "$(CTAGS_TO_RUN)",
    "'\n'",
};

class AwkwardNames : public GenerateTest {
protected:
    // Makes a directory of that name with one source file in it.
    std::string MakeDirectory(const std::string& name) const
    {
        const std::string directory = home / name;
        home.Write(name + "/a.h", "");
        home.Write(name + "/other.txt", "");
        return directory;
    }
    // Runs each and tells what went wrong: a failure, a word of complaint, a trap.
    std::string RunAll(const Requests::Commands& commands, const std::string& atHome = "")
    {
        std::string wrong;
        for (const std::string& command : commands) {
            const ProgramRun run = shell.Run(command, atHome.empty() ? home.Path() : atHome);
            if (run.status != 0)
                wrong += "[status " + std::to_string(run.status) + "]";
            wrong += run.output + run.errors + shell.TakeTrapped();
        }
        return wrong;
    }

    RealShell shell;
};

TEST_F(AwkwardNames, DirectoriesGetTheirTagsAndNothingElseRuns)
{
    ::setenv("WREN_CTAGS", shell.MakeTagsProgram("ctags").c_str(), 1);
    for (const std::string& name : kNames) {
        const std::string directory = MakeDirectory(name);
        CreateTags(&host, BEntry(directory.c_str()), kGenerateLocalCtags, nullptr);
        const std::vector<Requests::Commands> made = requests.Take();
        ASSERT_EQ(made.size(), 1u) << name;
        EXPECT_EQ(RunAll(made[0]), "") << name;
        const RealShell::Call call = shell.TakeCall();
        EXPECT_THAT(call.arguments,
                    ElementsAre("--c-kinds=+p", "--excmd=number", "-f", directory + "/tags.tmp", "-L", "-"))
            << name;
        EXPECT_EQ(call.input, directory + "/a.h\n") << name;
        EXPECT_EQ(RealShell::Content(directory + "/tags"), "made\n") << name;
        EXPECT_FALSE(std::filesystem::exists(directory + "/tags.tmp")) << name;
        EXPECT_TRUE(shell.LeftNothing()) << name;
    }
}

TEST_F(AwkwardNames, PastedCommandsTagTheDirectories)
{
    ::setenv("WREN_CTAGS", shell.MakeTagsProgram("ctags").c_str(), 1);
    for (const std::string& name : kNames) {
        const std::string directory = MakeDirectory(name);
        bool hint = false;
        HelpCreateTags(&host, BEntry(directory.c_str()), kGenerateLocalCtags, nullptr, hint);
        std::string pasted = std::exchange(host.log, {}).at(0);
        pasted = pasted.substr(pasted.find(' '), pasted.rfind(" 1 1 1") - pasted.find(' '));
        const ProgramRun run = shell.Run(pasted, home.Path(), directory);
        EXPECT_EQ(run.status, 0) << name;
        EXPECT_EQ(run.output + run.errors + shell.TakeTrapped(), "") << name;
        EXPECT_EQ(shell.TakeCall().input, directory + "/a.h\n") << name;
        EXPECT_EQ(RealShell::Content(directory + "/tags"), "made\n") << name;
    }
}

TEST_F(AwkwardNames, TheTagsProgramRunsAndNothingElse)
{
    const std::string directory = MakeDirectory("code");
    for (const std::string& name : kNames) {
        const std::string program = shell.MakeTagsProgram(name + "/Contents/Resources/cplustags");
        __CFBundle awkward{program.substr(0, program.size() - std::strlen("/Contents/Resources/cplustags"))};
        host.bundle = &awkward;
        for (const char* ofEnvironment : {"", program.c_str()}) {
            ::setenv("WREN_CTAGS", ofEnvironment, 1);
            CreateTags(&host, BEntry(directory.c_str()), kGenerateLocalCtags, nullptr);
            const std::vector<Requests::Commands> made = requests.Take();
            ASSERT_EQ(made.size(), 1u) << name;
            EXPECT_EQ(RunAll(made[0]), "") << name;
            EXPECT_EQ(shell.TakeCall().input, directory + "/a.h\n") << name;
        }
    }
}

TEST_F(AwkwardNames, TheHomeDirectoryKeepsTheSystemTags)
{
    ::setenv("WREN_CTAGS", shell.MakeTagsProgram("ctags").c_str(), 1);
    settings.Set("DeclScanSystemDirectories", MakeDirectory("headers").c_str());
    for (const std::string& name : kNames) {
        std::filesystem::create_directories(home / (name + "/Library/Caches"));
        CreateTags(&host, true, false);
        EXPECT_EQ(RunAll(requests.Take().at(0), home / name), "") << name;
        EXPECT_EQ(RealShell::Content(home / (name + "/Library/Caches/SystemHeaderTags")), "made\n") << name;
        EXPECT_TRUE(shell.LeftNothing()) << name;
    }
}

// What the move brings to the tags' place is whatever there is: nothing, or what a program that failed has left.
TEST_F(AwkwardNames, TheMoveRunsEvenWhenTheTagsProgramFailed)
{
    const std::string directory = MakeDirectory("code");
    ::setenv("WREN_CTAGS", (home.Write("fails", "")).c_str(), 1); // no program: it cannot be run
    home.Write("code/tags", "old\n");
    CreateTags(&host, BEntry(directory.c_str()), kGenerateLocalCtags, nullptr);
    EXPECT_THAT(RunAll(requests.Take().at(0)), testing::HasSubstr("tags.tmp")) << "there was nothing to move";
    EXPECT_EQ(RealShell::Content(directory + "/tags"), "old\n");

    home.Write("code/tags.tmp", "half\n");
    CreateTags(&host, BEntry(directory.c_str()), kGenerateLocalCtags, nullptr);
    RunAll(requests.Take().at(0));
    EXPECT_EQ(RealShell::Content(directory + "/tags"), "half\n");
}

} // namespace
