// The commands after the reader of their output has gone.
#include "tests/support/LostReader.h"
#include "tests/support/FileContent.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ShellWord.h"
#include "tests/support/TempDirectory.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>

namespace {

namespace fs = std::filesystem;

// A project with tags, and one without.
class CommandWithoutReader : public ::testing::Test {
protected:
    CommandWithoutReader()
    {
        tree.Write("home/.keep", "");
        tree.Write("src/a.mm", "alo");
        tree.Write("tags", "alone\tsrc/a.mm\t1;\"\tv\nalone\tsrc/b.mm\t1;\"\tv\n");
        tree.Write("lines", R"({"do":"open","path":"src/a.mm"})"
                            "\n"
                            R"({"do":"state"})"
                            "\n");
        tree.Write("project/a.h", "int a(void);\n");
        tree.Write("system/s.h", "int s(void);\n");
        tree.Write("settings", "DeclScanSystemDirectories " + tree / "nowhere*" + " " + tree / "system" + "\n");
    }

    // Runs it with and without SIGPIPE ignored, as some parents leave it. Only 'made' may be new afterwards.
    void ExpectQuietEnd(const std::string& command, const std::set<std::string>& made = {}) const
    {
        for (const auto answer : {SIG_DFL, SIG_IGN}) {
            const std::string why = command + (answer == SIG_IGN ? ", SIGPIPE ignored" : "");
            for (const std::string& file : made)
                fs::remove(tree / file);
            const std::set<std::string> before = Files();
            const ProgramRun run = Run(command, answer);
            EXPECT_EQ(run.signal, SIGPIPE) << why << ": status " << run.status;
            EXPECT_EQ(run.errors, "") << why;
            std::set<std::string> after = Files();
            for (const std::string& file : made)
                EXPECT_EQ(after.erase(file), 1u) << why << ": " << file;
            EXPECT_EQ(after, before) << why;
        }
    }

    ProgramRun Run(const std::string& command, void (*answer)(int)) const
    {
        const LostReader nobody;
        const StartedWith started(SIGPIPE, answer);
        RunningProgram running({"/bin/sh", "-c", "exec " + ShellWord(WREN_PROGRAM) + " " + command}, tree.Path(),
                               {{"HOME", tree / "home"}}, nobody.Output());
        return running.Wait();
    }

    std::set<std::string> Files() const
    {
        std::set<std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(tree.Path()))
            if (!entry.is_directory())
                files.insert(fs::relative(entry.path(), tree.Path()));
        return files;
    }

    const TempDirectory tree;
};

constexpr const char* kSystemTags = "home/Library/Caches/SystemHeaderTags";

} // namespace

TEST_F(CommandWithoutReader, EndsAsShellsExpect)
{
    ExpectQuietEnd("lookup --symbol alone");
    ExpectQuietEnd("complete src/a.mm:1");
    ExpectQuietEnd("complete src/a.mm:1 --auto");
    ExpectQuietEnd("script <lines");
    ExpectQuietEnd("tags project --dry-run");
}

// The index is not made by them, so that they leave no new files.
TEST_F(CommandWithoutReader, EndsAsShellsExpectWhenItAnswersFromTheIndex)
{
    tree.Write("project/.wren", "");
    tree.Write("project/a.c", "int a(void) { return 1; }\nint b(void) { return a(); }\n");
    for (const char* source : {"project/a.c", "project/a.h"}) // young files are looked at again
        fs::last_write_time(tree / source, fs::file_time_type::clock::now() - std::chrono::hours(1));
    // In the same cache as the commands below.
    ASSERT_EQ(RunProgram({WREN_PROGRAM, "index", "project"}, tree.Path(), {{"HOME", tree / "home"}}).status, 0);
    ExpectQuietEnd("index project --status");
    ExpectQuietEnd("find a --in project");
    ExpectQuietEnd("outline project/a.c");
    ExpectQuietEnd("definition project/a.c:2:23 --no-system");
    ExpectQuietEnd("declaration project/a.c:2:23 --no-system --json");
    ExpectQuietEnd("references project/a.c:2:23 --no-system");
    ExpectQuietEnd("explain project/a.c:2:23 --no-system");
    ExpectQuietEnd("graph calls b --in project");
}

TEST_F(CommandWithoutReader, MakesAllTagsWhenItsOutputIsClosed)
{
    tree.Write("settings", "DeclScanSystemDirectories " + tree / "system" + "\n");
    ExpectQuietEnd("tags project --system --settings settings", {"project/tags", kSystemTags});
}

TEST_F(CommandWithoutReader, MakesAllTagsWhenStandardErrorIsClosed)
{
    ExpectQuietEnd("tags --system --settings settings 2>&1", {kSystemTags});
    EXPECT_NE(Content(tree / kSystemTags).find("system/s.h"), std::string::npos);
}
