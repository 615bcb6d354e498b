// A hostile tree, in each face of the program that needs no display.
#include "tests/cli/TagsCommandFixture.h"
#include "tests/support/ShellWord.h"

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <unistd.h>

namespace {

// Its tags are stale, so that a lookup rebuilds them, and their temporary is a link out of the tree. A write through it
// would contain a name from a file that a shell runs.
class HostileTreeInEachFace : public ::testing::Test {
protected:
    void Unpack()
    {
        fs::remove_all(tree / "T");
        tree.Write("T/empty.c", "int bar;");
        tree.Write("T/main.c", "bar\n");
        tree.Write("T/tags", "bar\tempty.c\t1;\"\tv\n");
        tree.Write("T/a.c", "int foo;\n");
        tree.Write("T/x/$(touch $HOME!PWNED).c", "int p;\n");
        fs::last_write_time(tree / "T/tags", fs::file_time_type::clock::now() - std::chrono::hours(10'000));
    }

    ProgramRun Wren(const std::vector<std::string>& words, const std::string& input = "") const
    {
        std::vector<std::string> command = {"/bin/sh", "-c", "exec \"$@\" <" + ShellWord(tree.Write("input", input)),
                                            "sh", WREN_PROGRAM};
        command.insert(command.end(), words.begin(), words.end());
        command.insert(command.end(), {"--home", tree / "home"});
        return RunProgram(command, tree / "T");
    }

    // Opens the file, executes the line, and waits for all work to end.
    std::string Script(const std::string& line) const
    {
        return "{\"do\": \"document\", \"path\": \"" + (tree / "T/main.c") + "\"}\n" +
               "{\"do\": \"select\", \"start\": 1}\n" + line + "\n{\"do\": \"settle\"}\n";
    }

    const TempDirectory tree;
};

constexpr const char* kLookUp = R"({"do": "command", "name": "SymbolLookup"})";
constexpr const char* kUpdate = R"({"do": "popup", "choose": "Update local tags"})";

struct Face {
    const char* name;
    std::function<void()> meets;
};

struct Target {
    const char* why;
    const char* content; // null: no file
};

const Target kTargets[] = {
    {"absent", nullptr},
    {"empty", ""},
    {"a table", "one\ttwo\t3\n"},
    {"shell commands", "alias ll='ls -l'\n"},
    {"tags of another project", "old\told.h\t1;\"\tv\n"},
};

} // namespace

TEST_F(HostileTreeInEachFace, GetsNothingWrittenOutsideOfItself)
{
    const std::string create = "{\"do\": \"answer\", \"file\": \"" + (tree / "T") + "\"}\n" +
                               R"({"do": "popup", "choose": "Create local tags..."})";
    const std::string generate = R"({"do": "answer", "alert": 1})"
                                 "\n" +
                                 std::string(kLookUp);
    const auto withoutTags = [this] { fs::remove(tree / "T/tags"); };
    const Face faces[] = {
        {"wren lookup",
         [&] {
             Wren({"lookup", "main.c:1:1"});
         }},
        {"wren complete",
         [&] {
             Wren({"complete", "main.c:1:4"});
         }},
        {"wren tags",
         [&] {
             Wren({"tags", "."});
         }},
        {"script, a lookup", [&] { Wren({"script"}, Script(kLookUp)); }},
        {"script, the menu", [&] { Wren({"script"}, Script(kUpdate)); }},
        {"script, a directory chosen", [&] { Wren({"script"}, Script(create)); }},
        {"script, the alert",
         [&] {
             withoutTags();
             Wren({"script"}, Script(generate));
         }},
        {"guarded script, a lookup",
         [&] {
             Wren({"script", "--guarded"}, Script(kLookUp));
         }},
        {"guarded script, the menu",
         [&] {
             Wren({"script", "--guarded"}, Script(kUpdate));
         }},
        {"guarded script, a directory chosen",
         [&] {
             Wren({"script", "--guarded"}, Script(create));
         }},
        {"guarded script, the alert",
         [&] {
             withoutTags();
             Wren({"script", "--guarded"}, Script(generate));
         }},
    };
    const std::string aliases = tree / "home/.bash_aliases";
    for (const Face& face : faces)
        for (const Target& target : kTargets) {
            Unpack();
            fs::remove(aliases);
            if (target.content != nullptr)
                tree.Write("home/.bash_aliases", target.content);
            fs::create_directories(tree / "home");
            fs::create_symlink(aliases, tree / "T/tags.tmp");
            face.meets();
            EXPECT_EQ(fs::exists(aliases), target.content != nullptr) << face.name << ": " << target.why;
            EXPECT_EQ(Content(aliases), target.content == nullptr ? "" : target.content)
                << face.name << ": " << target.why;
            EXPECT_FALSE(fs::exists(tree / "homePWNED")) << face.name << ": " << target.why;
        }
}

// mv would ask on the terminal whether to replace the file, and the terminal stops a background job that reads from it.
TEST(TagsCommandOnATerminal, ReplacesWriteProtectedTagsWithoutAQuestion)
{
    const TempDirectory tree;
    tree.Write("T/main.c", "int bar;\n");
    fs::permissions(tree.Write("T/tags", "old\told.h\t1;\"\tv\n"), fs::perms::owner_read);
    fs::create_directories(tree / "home");
    tree.Write("input", "{\"do\": \"document\", \"path\": \"" + (tree / "T/main.c") + "\"}\n" + kUpdate +
                            "\n{\"do\": \"settle\"}\n");
    // Root may write to any file until it drops that right.
    const std::string ordinary =
        ::geteuid() == 0 ? "/usr/bin/setpriv --bounding-set=-dac_override,-dac_read_search " : "";
    tree.Write("job", "set -m\n" + ordinary + ShellWord(WREN_PROGRAM) + " script --guarded --home " +
                          ShellWord(tree / "home") + " <" + ShellWord(tree / "input") + " >" +
                          ShellWord(tree / "answers") + " &\nwait -f %1\necho status $?\njobs\n");
    const ProgramRun run =
        RunProgram({"/usr/bin/script", "-qec", "bash " + ShellWord(tree / "job"), "/dev/null"}, tree.Path());
    EXPECT_TRUE(HasText(run.output, "status 0")) << run.output;
    EXPECT_FALSE(HasText(run.output, "Stopped")) << run.output;
    EXPECT_TRUE(HasText(Content(tree / "T/tags"), "main.c")) << Content(tree / "answers");
    EXPECT_EQ(fs::status(tree / "T/tags").permissions(), fs::perms::owner_read);
}
