// Trees that were made to harm whoever indexes them.
#include "tests/support/RunProgram.h"
#include "tests/symbols/robust/Indexes.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// A tree beside a home directory that it must not touch. "mark" in the home is a program that leaves a mark there.
class HostileIndex : public testing::Test {
protected:
    HostileIndex()
    {
        fs::create_directories(work / "home");
        work.Write("home/mark", "#!/bin/sh\necho run >>" + work / "home/marks\n");
        fs::permissions(work / "home/mark", fs::perms(0755));
        work.Write("tree/good.c", "int good;\n");
    }

    std::string Root() const { return work / "tree"; }
    std::string Mark() const { return work / "home/mark"; }

    // Updates the index twice, so that both ways of finding changes see the tree; returns what went wrong.
    std::string Update()
    {
        std::string errors = UpdateError(index);
        work.Write("tree/later.c", "int later;\n");
        return errors + UpdateError(index);
    }
    size_t Count(const std::string& name) const
    {
        const symbols::SnapshotPointer current = index.Current();
        return current == nullptr ? 0 : current->ByName(name, {}).found.size();
    }
    void ExpectGoodTree()
    {
        EXPECT_EQ(Update(), "");
        EXPECT_EQ(Count("good"), 1u);
        EXPECT_EQ(Count("later"), 1u);
        EXPECT_FALSE(fs::exists(work / "home/marks")) << "a program of the tree was run";
    }

    std::vector<std::string> NamesInTree() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(Root()))
            names.push_back(entry.path());
        std::ranges::sort(names);
        return names;
    }

    const TempDirectory work;
    symbols::Index index{OptionsFor(Root(), work / "cache")};
};

TEST_F(HostileIndex, GitsConfigurationRunsNothing)
{
    ASSERT_EQ(RunProgram({"/usr/bin/git", "init", "--quiet", Root()}, work.Path(), {{"HOME", work / "home"}}).status,
              0);
    std::ofstream(Root() + "/.git/config", std::ios::app)
        << "[core]\n\tfsmonitor = " << Mark() << "\n\tpager = " << Mark() << "\n\thooksPath = " << Root()
        << "/hooks\n\tsshCommand = " << Mark() << "\n\tuntrackedCache = true\n\texcludesFile = |" << Mark()
        << "\n\tattributesFile = " << Root() << "/.gitattributes\n[filter \"evil\"]\n\tclean = " << Mark()
        << "\n\tsmudge = " << Mark() << "\n\tprocess = " << Mark() << "\n[alias]\n\tls-files = !" << Mark()
        << "\n\tstatus = !" << Mark() << "\n[diff]\n\texternal = " << Mark() << "\n[credential]\n\thelper = !" << Mark()
        << "\n";
    work.Write("tree/.gitattributes", "* filter=evil diff=evil\n");
    for (const char* hook : {"post-index-change", "fsmonitor-watchman", "pre-auto-gc", "query-watchman"})
        for (const char* place : {"tree/hooks/", "tree/.git/hooks/"}) {
            fs::create_directories(work / place);
            fs::create_symlink(Mark(), work / place + std::string(hook));
        }
    ExpectGoodTree();
}

TEST_F(HostileIndex, OptionFilesOfCtagsAreNotRead)
{
    const std::string options = "--exclude=*\n--langdef=evil\n--map-evil=+.c\n--languages=-C\n--sort=no\n-f/dev/null\n";
    for (const char* file : {".ctags", "ctags.cnf", ".ctags.d/a.ctags", "ctags.d/a.ctags", ".config/ctags/a.ctags"}) {
        work.Write(std::string("tree/") + file, options);
        work.Write(std::string("home/") + file, options);
    }
    ExpectGoodTree();
}

// Each name is a source, whatever is in it.
const char* const kNames[] = {
    "line\nbreak.c",    "esc\033[2J.c", "tab\tname.c",   "$(mark).c", "`mark`.c", "-o mark.c", "--options=x.c",
    "back\\slash.c",    "quote'\".c",   "bad\xff\xfe.c", " blank .c", "%s%n.c",   ";mark;.c",  "|mark.c",
    "\u202ereversed.c", "!negative.c",  "#hash.c",       "*.c",       "[a].c",    "~.c",
};

TEST_F(HostileIndex, OddNamesAreNamesLikeOthers)
{
    size_t wanted = 0;
    for (const std::string name : kNames)
        work.Write("tree/" + name, "int odd_" + std::to_string(wanted++) + ";\n");
    ExpectGoodTree();
    for (size_t number = 0; number < wanted; ++number)
        EXPECT_EQ(Count("odd_" + std::to_string(number)), 1u) << number;
    for (const std::string name : kNames)
        EXPECT_TRUE(index.Current()->FindFile(name)) << name;
}

TEST_F(HostileIndex, ThingsThatAreNotFilesAreNotReadOrWaitedFor)
{
    ASSERT_EQ(::mkfifo((Root() + "/pipe.c").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", Root() + "/zero.c");
    fs::create_symlink(Root() + "/pipe.c", Root() + "/link-to-pipe.c");
    fs::create_symlink(Root() + "/loop.c", Root() + "/loop.c");
    fs::create_directory_symlink(Root(), Root() + "/again");
    fs::create_directories(Root() + "/directory.c");
    fs::create_directories(Root() + "/sub");
    work.Write("tree/sub/inner.c", "int inner;\n");
    for (const char* file : {".wrenignore", ".gitignore", ".git", "tags"})
        ASSERT_EQ(::mkfifo((Root() + "/sub/" + file).c_str(), 0600), 0);
    ExpectGoodTree();
    EXPECT_EQ(Count("inner"), 1u);
}

TEST_F(HostileIndex, AHugeSparseFileCostsOnlyItself)
{
    work.Write("tree/sparse.c", "int sparse;\n");
    ASSERT_EQ(::truncate((Root() + "/sparse.c").c_str(), off_t(1) << 40), 0);
    Update();
    EXPECT_EQ(Count("good"), 1u);
    EXPECT_EQ(Count("later"), 1u);
}

TEST_F(HostileIndex, DirectoriesDeeperThanAnyPathEndTheWalk)
{
    const int top = ::open(Root().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::string name(200, 'd');
    int directory = ::dup(top);
    for (int depth = 0; depth < 60; ++depth) { // 12,000 bytes
        ASSERT_EQ(::mkdirat(directory, name.c_str(), 0700), 0);
        const int next = ::openat(directory, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ::close(directory);
        directory = next;
    }
    ::close(::openat(directory, "deep.c", O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    ::close(directory);
    ::close(top);
    ExpectGoodTree();
}

TEST_F(HostileIndex, IgnoreFilesThatWantToTakeForEverEnd)
{
    std::string rules;
    for (int line = 0; line < 300; ++line)
        rules += "**/" + std::string(40, 'a') + "*a*a*a*a*a*a*a*a*a*a*a*b" + std::to_string(line) + "\n";
    work.Write("tree/.wrenignore", rules + "[" + std::string(5000, '[') + "\n" + std::string(100'000, '*') + "x\n");
    for (int file = 0; file < 20; ++file)
        work.Write("tree/" + std::string(200, 'a') + std::to_string(file) + ".c", "int same;\n");
    ExpectGoodTree();
    EXPECT_EQ(Count("same"), 20u);
}

TEST_F(HostileIndex, NothingIsWrittenIntoTheTreeOrThroughItsLinks)
{
    const std::string victim = work.Write("home/victim", "mine\n");
    for (const char* name : {"tags", ".tags.lock", ".wren", "manifest", "lock", "tags.tmp"})
        fs::create_symlink(victim, Root() + "/" + name);
    const std::vector<std::string> before = NamesInTree();
    EXPECT_EQ(UpdateError(index), "");
    EXPECT_EQ(NamesInTree(), before);
    EXPECT_EQ(std::ifstream(victim).peek(), 'm');
    EXPECT_EQ(fs::file_size(victim), 5u);
}

} // namespace
