// A hostile tree with links, pipes, option files and odd names in the way of its tags.

#include "tests/cplustags/Workspace.h"
#include "tests/support/ShellWord.h"

#include <gtest/gtest.h>

#include <optional>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using Words = Workspace::Words;

// A tree with a source beside a home directory that it must not touch.
class HostileTree : public testing::Test {
protected:
    HostileTree()
    {
        fs::create_directories(work / "home");
        work.Write("tree/a.c", "int a;\n");
        work.Write("tree/x/$(touch $HOME!PWNED).c", "int p;\n");
        work.environment["HOME"] = work / "home";
    }

    // Makes tags with a list from find and a temporary file, which then replaces the tags file.
    ProgramRun MakeTags() const
    {
        const std::string tree = ShellWord(work / "tree");
        return RunProgram({"/bin/sh", "-c",
                           "find " + tree + " -name '*.c' | " + ShellWord(CPLUSTAGS) +
                               " --c-kinds=+p --excmd=number -f " + tree + "/tags.tmp -L -; mv " + tree + "/tags.tmp " +
                               tree + "/tags"},
                          work.Path(), work.environment);
    }

    ProgramRun Run(Words words) const
    {
        words.push_back("tree/a.c");
        return work.Run(words);
    }

    Workspace work;
};

struct Meant {
    const char* why;
    std::optional<std::string> text; // of the link's target
    bool mayBeReplaced;              // with --follow-links
};

const Meant kMeant[] = {
    {"no file", std::nullopt, true},
    {"an empty file", "", true},
    {"a table", "one\ttwo\t3\nfour\tfive\t6\n", false},
    {"a tags file", "!_TAG_FILE_SORTED\t1\t//\nold\told.c\t1;\"\tf\n", true},
    {"a text", "alias ls='ls -l'\n", false},
};

TEST_F(HostileTree, NothingIsWrittenThroughALinkInPlaceOfATemporary)
{
    for (const Meant& meant : kMeant) {
        const std::string file = work / "home/.bash_aliases";
        fs::remove(file);
        if (meant.text)
            work.Write("home/.bash_aliases", *meant.text);
        fs::remove(work / "tree/tags");
        fs::create_symlink(file, work / "tree/tags.tmp");
        const ProgramRun run = MakeTags();
        EXPECT_NE(run.errors.find(work / "tree/tags.tmp is a symbolic link to " + file), std::string::npos)
            << meant.why << ": " << run.errors;
        EXPECT_EQ(fs::exists(file), meant.text.has_value()) << meant.why;
        EXPECT_EQ(work.Content("home/.bash_aliases"), meant.text.value_or("")) << meant.why;
        EXPECT_EQ(work.Leaves("home").size(), meant.text ? 1u : 0u) << meant.why;
        EXPECT_EQ(work.Leaves("tree"), (Words{"a.c", "tags", "x"})) << meant.why << ", and mv moves the link itself";
    }
}

TEST_F(HostileTree, ALinkIsRefusedBeforeAnyWorkIsDone)
{
    work.environment["CPLUSTAGS_CTAGS"] = "/none";
    const Words ways[] = {{"-f", "tree/tags"}, {"--append=yes", "-f", "tree/tags"}};
    for (const Meant& meant : kMeant)
        for (const Words& words : ways) {
            fs::remove(work / "home/file");
            if (meant.text)
                work.Write("home/file", *meant.text);
            fs::remove(work / "tree/tags");
            fs::create_symlink("../home/file", work / "tree/tags");
            const ProgramRun run = Run(words);
            EXPECT_EQ(run.status, 1) << meant.why;
            EXPECT_EQ(run.errors, "cplustags: " + work / "tree/tags is a symbolic link to ../home/file and is " +
                                      "left unchanged; remove it, name another file with -f, or give " +
                                      "--follow-links to write the file that it points to\n")
                << meant.why;
            EXPECT_EQ(fs::read_symlink(work / "tree/tags"), "../home/file") << meant.why;
            EXPECT_EQ(fs::exists(work / "home/file"), meant.text.has_value()) << meant.why;
            EXPECT_EQ(work.Content("home/file"), meant.text.value_or("")) << meant.why;
        }
}

TEST_F(HostileTree, ALinkIsFollowedOnRequest)
{
    for (const Meant& meant : kMeant) {
        fs::remove(work / "home/file");
        if (meant.text)
            work.Write("home/file", *meant.text);
        fs::remove(work / "tree/tags");
        fs::create_symlink("../home/file", work / "tree/tags");
        const ProgramRun run = Run({"--follow-links", "-f", "tree/tags"});
        EXPECT_EQ(run.status, meant.mayBeReplaced ? 0 : 1) << meant.why << ": " << run.errors;
        EXPECT_EQ(work.Tags("home/file") == Words{"a a.c 1;\" v"}, meant.mayBeReplaced) << meant.why;
        EXPECT_EQ(fs::read_symlink(work / "tree/tags"), "../home/file") << meant.why << ": it stays a link";
        EXPECT_EQ(work.Leaves("home"), Words{"file"}) << meant.why;
    }
}

TEST_F(HostileTree, LinksToDirectoriesInFrontOfTheNameAreFollowed)
{
    fs::create_directory_symlink("tree", work / "way");
    EXPECT_EQ(Run({"-f", "way/tags"}).status, 0);
    EXPECT_EQ(work.Tags("tree/tags"), Words{"a " + work / "tree/a.c" + " 1;\" v"});
}

TEST_F(HostileTree, ASymbolicLinkToADirectoryIsRefused)
{
    fs::create_directory_symlink("../home", work / "tree/tags");
    for (const char* target : {"tree/tags", "tree/tags/"})
        for (const char* option : {"--append=yes", "--append=no"}) {
            const ProgramRun run = Run({option, "-f", target});
            EXPECT_EQ(run.status, 1) << target;
            EXPECT_NE(run.errors.find("tree/tags is a symbolic link to ../home"), std::string::npos) << run.errors;
        }
    EXPECT_EQ(Run({"--follow-links", "-f", "tree/tags"}).status, 1);
    EXPECT_EQ(work.Leaves("home"), Words{});
}

void MakeSocket(const std::string& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    EXPECT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(socket);
}

TEST_F(HostileTree, NonFilesAreRefusedByNameWithoutWaiting)
{
    ASSERT_EQ(::mkfifo((work / "tree/pipe").c_str(), 0600), 0);
    MakeSocket(work / "tree/socket");
    work.Write("tree/directory/file", "the user's");
    for (const std::string& target : {work / "tree/pipe", work / "tree/socket", work / "tree/directory",
                                      std::string("/dev/null"), std::string("/dev/zero")})
        for (const Words& options : {Words{}, Words{"--append=yes"}, Words{"--follow-links"}}) {
            Words words = options;
            words.insert(words.end(), {"-f", target});
            const ProgramRun run = Run(words);
            EXPECT_EQ(run.status, 1) << target;
            EXPECT_NE(run.errors.find(target + " is not a tags file and is left unchanged"), std::string::npos)
                << run.errors;
        }
    EXPECT_TRUE(fs::is_fifo(work / "tree/pipe"));
    EXPECT_TRUE(fs::is_socket(work / "tree/socket"));
    EXPECT_EQ(work.Content("tree/directory/file"), "the user's");
    EXPECT_EQ(work.Leaves("tree"), (Words{"a.c", "directory", "pipe", "socket", "x"}));
}

TEST_F(HostileTree, OtherHardLinksOfTheOldTagsFileKeepTheirContent)
{
    const std::string old = "old\told.c\t1;\"\tf\n";
    for (const char* option : {"--append=no", "--append=yes"}) {
        work.Write("home/file", old);
        fs::remove(work / "tree/tags");
        fs::create_hard_link(work / "home/file", work / "tree/tags");
        const ProgramRun run = Run({option, "-f", "tree/tags"});
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_EQ(work.Tags("tree/tags"), Words{"a a.c 1;\" v"}) << option;
        EXPECT_EQ(work.Content("home/file"), old) << option;
    }
}

constexpr off_t kTerabyte = 1ll << 40;

TEST_F(HostileTree, ASparseSourceIsNotReadToItsEnd)
{
    ASSERT_EQ(::truncate(work.Write("tree/holes.c", "int b;\n").c_str(), kTerabyte), 0);
    const ProgramRun run = work.Run({"-f", "tree/tags", "tree/holes.c", "tree/a.c"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "cplustags: cannot read tree/holes.c: File too large\n");
    EXPECT_EQ(work.Tags("tree/tags"), Words{"a a.c 1;\" v"});
}

TEST_F(HostileTree, ASparseOldTagsFileIsNotReadToItsEnd)
{
    const std::string tags = work.Write("tree/tags", "old\told.c\t1;\"\tf\n");
    ASSERT_EQ(::truncate(tags.c_str(), kTerabyte), 0);
    const ProgramRun run = Run({"--append=yes", "-f", "tree/tags"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "cplustags: " + tags + " is far longer than its contents and is left unchanged; remove it\n");
    EXPECT_EQ(fs::file_size(tags), static_cast<std::uintmax_t>(kTerabyte));
    EXPECT_EQ(Run({"-f", "tree/tags"}).status, 0) << "without it nothing of it is read";
    EXPECT_EQ(work.Tags("tree/tags"), Words{"a a.c 1;\" v"});
}

// In the directory of the tags file, where ctags runs, in the current one, and where the user's own files would be.
TEST_F(HostileTree, OptionFilesOfTheTreeAreNotRead)
{
    const std::string options = "--exclude=*\n--langmap=C:.none\n-f " + work / "home/written" + "\n--no-such-option\n";
    for (const char* file : {".ctags.d/a.ctags", "ctags.d/a.ctags", ".ctags", "ctags", ".config/ctags/a.ctags"})
        for (const char* place : {"tree/", "tree/x/", ""})
            work.Write(std::string(place) + file, options);
    work.environment["HOME"] = work / "tree";
    work.environment["XDG_CONFIG_HOME"] = work / "tree/.config";
    work.environment["CTAGS"] = work.environment["ETAGS"] = "--exclude=*";
    fs::create_directory(work / "bin");
    fs::create_symlink("/usr/bin/ctags-universal", work / "bin/ctags");
    for (const std::string& path : {std::string("/usr/bin:/bin"), work / "bin"})
        for (const char* directory : {"tree", "tree/x", "."}) {
            work.environment["PATH"] = path; // the second path has a ctags that is asked for its version
            const ProgramRun run = RunProgram(Workspace::Command({"-f", work / "tree/tags", work / "tree/a.c"}),
                                              work / directory, work.environment);
            EXPECT_EQ(run.status, 0) << path << " " << directory << ": " << run.errors;
            EXPECT_EQ(work.Tags("tree/tags"), Words{"a a.c 1;\" v"}) << path << " " << directory;
            fs::remove(work / "tree/tags");
        }
    EXPECT_EQ(work.Leaves("home"), Words{});
}

TEST_F(HostileTree, FileNamesPassNoControlCharactersToATerminal)
{
    const std::string name = "tree/\x1b[2J\xc2\x9bK\x9bK";
    const std::string shown = "tree/\\x1b[2J\\xc2\\x9bK\\x9bK";
    fs::create_symlink(name + ".c", work / name + ".c");
    work.Write(name + ".h", "int " + std::string(1100, 'x') + ";\n");
    work.Write(name + "\t.h", "int tab;\n");
    const ProgramRun run = work.Run({"-f", "tree/tags", name + ".c", name + ".h", name + "\t.h"});
    EXPECT_NE(run.errors.find("cannot read " + shown + ".c"), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find(shown + "\\t.h is left out"), std::string::npos) << run.errors;
    EXPECT_EQ(run.errors.find_first_of("\x1b\x9b"), std::string::npos) << run.errors;
    fs::create_symlink(name, work / name);
    const ProgramRun refused = work.Run({"-f", name, "tree/a.c"});
    EXPECT_NE(refused.errors.find(shown + " is a symbolic link to " + shown), std::string::npos) << refused.errors;
    EXPECT_EQ(refused.errors.find_first_of("\x1b\x9b"), std::string::npos) << refused.errors;
}

TEST_F(HostileTree, ALinkIsRefusedWhereAnEmptyListWouldMakeAFile)
{
    fs::create_symlink("../home/file", work / "tree/tags");
    EXPECT_EQ(work.Run({"-f", "tree/tags", "-L", "-"}).status, 1);
    EXPECT_EQ(work.Leaves("home"), Words{});
}

TEST_F(HostileTree, TheListIsOnlyReadAndMayBeAPipe)
{
    ASSERT_EQ(::mkfifo((work / "list").c_str(), 0600), 0);
    const std::string command =
        "printf 'tree/a.c\\n' >list & " + ShellWord(CPLUSTAGS) + " -f tree/tags -L list; s=$?; wait; exit $s";
    const ProgramRun run = RunProgram({"/bin/sh", "-c", command}, work.Path());
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(work.Tags("tree/tags"), Words{"a a.c 1;\" v"});
    const std::string list = "tree/a.c\n";
    work.Write("other", list);
    EXPECT_EQ(work.Run({"-f", "tree/tags", "-L", "other"}).status, 0);
    EXPECT_EQ(work.Content("other"), list);
}

} // namespace
