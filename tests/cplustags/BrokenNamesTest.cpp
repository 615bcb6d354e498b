// Names with line breaks, printed by "find", that lead out of their tree.

#include "cplustags/FileList.h"
#include "cplustags/Progress.h"
#include "tests/support/RunProgram.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cplustags {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

// A tree, and the user's files that must not be tagged: beside it, and in the directory of the tags file.
class NamesWithLineBreaks : public testing::Test {
protected:
    NamesWithLineBreaks()
    {
        directory.Write("home/secret.h", "");
        directory.Write("home/below/secret.h", "");
        directory.Write("cwd/secret.h", "");
        directory.Write("tree/s/a.h", "");
        directory.Write("tree/z/b.h", "");
    }

    std::string InTree(const std::string& leaf) const { return directory / "tree/" + leaf; }

    // The output of "find" for the tree.
    std::string Found(const Names& starts) const
    {
        Names words = {"/usr/bin/find"};
        words.insert(words.end(), starts.begin(), starts.end());
        words.insert(words.end(), {"-name", "*.h"});
        return RunProgram(words, directory / "cwd").output;
    }

    // The files tagged for a list.
    Names Listed(const std::string& list) const
    {
        const std::string path = directory.Write("list", list);
        const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        const fs::path before = fs::current_path();
        fs::current_path(directory / "cwd");
        Names paths;
        {
            Progress progress(nowhere);
            FileList files({}, file, directory / "cwd", directory / "tree", progress, [] { return true; });
            for (std::string name; files.Next(name);)
                paths.push_back(name.substr((directory / "").size()));
        }
        fs::current_path(before);
        ::close(file);
        ::close(nowhere);
        std::sort(paths.begin(), paths.end());
        return paths;
    }

    // All files of the tree are tagged, and no others.
    void ExpectOnlyTheTree(const Names& paths, const std::string& why) const
    {
        for (const std::string& path : paths)
            EXPECT_EQ(path.rfind("tree/", 0), 0u) << why << ": " << path;
        for (const char* path : {"tree/s/a.h", "tree/z/b.h"})
            EXPECT_EQ(std::count(paths.begin(), paths.end(), path), 1) << why << ": " << path;
    }

    void Remake(const std::string& leaf) const
    {
        fs::remove_all(directory / "tree/" + leaf);
        directory.Write("tree/" + leaf, "");
    }

    const TempDirectory directory;
};

TEST_F(NamesWithLineBreaks, NeverLeadOutOfTheTree)
{
    const std::string home = directory / "home";
    const std::string tree = directory / "tree";
    const struct {
        const char* why;
        std::string name; // inside the tree
    } names[] = {
        {"a break in front of an absolute name", "x.h\n" + home + "/secret.h"},
        {"in a directory", "s/x.h\n" + home + "/secret.h"},
        {"where no name was before", "none/x.h\n" + home + "/secret.h"},
        {"no file before the break", "\n" + home + "/secret.h"},
        {"two breaks", "x.h\n\n" + home + "/secret.h"},
        {"more breaks than a name has lines that are looked at", "x.h" + std::string(40, '\n') + home + "/secret.h"},
        {"a file of the tree in between", "x.h\n" + tree + "/s/a.h\n" + home + "/secret.h"},
        {"several of them", "x.h\n" + tree + "/s/a.h\n" + tree + "/z/b.h\n" + tree + "/s/a.h\n" + home + "/secret.h"},
        {"a file of the user's in between", "x.h\n" + home + "/secret.h\n" + home + "/below/secret.h"},
        {"a name that goes on behind the file of the user's", "x.h\n" + home + "/secret.h\nmore.h"},
        {"a directory of the user's in between", "x.h\n" + home + "/below\n/" + home + "/secret.h"},
        {"a relative name", "x.h\nsecret.h"},
        {"a relative name that goes on", "x.h\nsecret.h\nmore.h"},
        {"a relative name that goes on with an absolute one", "x.h\nsecret.h\n" + home + "/secret.h"},
        {"up", "x.h\n../home/secret.h"},
        {"from here", "x.h\n./secret.h"},
    };
    const auto none = [](const std::string&) {};
    const std::pair<const char*, std::function<void(const std::string&)>> firstLines[] = {
        {"nothing", none},
        {"a file", [](const std::string& path) { std::ofstream(path) << ""; }},
        {"a directory", [](const std::string& path) { fs::create_directories(path); }},
        {"a pipe", [](const std::string& path) { ::mkfifo(path.c_str(), 0600); }},
        {"a link to nothing", [](const std::string& path) { fs::create_symlink("none", path); }},
        {"a link to a directory", [](const std::string& path) { fs::create_directory_symlink("s", path); }},
    };
    for (const auto& [kind, makeFirst] : firstLines)
        for (const auto& name : names) {
            fs::remove_all(directory / "tree");
            for (const char* leaf : {"s/a.h", "z/b.h"})
                directory.Write(std::string("tree/") + leaf, "");
            directory.Write("tree/" + name.name, "");
            const std::string first = InTree(name.name.substr(0, name.name.find('\n')));
            if (first.back() != '/')
                makeFirst(first);
            const std::string why = std::string(name.why) + ", where the first line is " + kind;
            ExpectOnlyTheTree(Listed(Found({tree})), why);
            ExpectOnlyTheTree(Listed(Found({"../tree"})), why + ", relative");
            directory.Write("tree/a.h", ""); // makes the whole tree a known place, now or later
            ExpectOnlyTheTree(Listed(Found({tree})), why + ", with a file in the tree itself");
        }
}

// "find" prints matching names of anything, not just of files.
TEST_F(NamesWithLineBreaks, AreReadWhetherOrNotTheyNameFiles)
{
    const std::string name = "x.h\n" + directory / "home/secret.h";
    fs::create_directories(fs::path(InTree(name)).parent_path());
    directory.Write("tree/x.h", "");
    const std::pair<const char*, std::function<void(const std::string&)>> kinds[] = {
        {"a directory", [](const std::string& path) { fs::create_directory(path); }},
        {"a pipe", [](const std::string& path) { ::mkfifo(path.c_str(), 0600); }},
        {"a link to nothing", [](const std::string& path) { fs::create_symlink("none", path); }},
        {"a link to itself", [](const std::string& path) { fs::create_symlink("secret.h", path); }},
    };
    for (const auto& [kind, make] : kinds) {
        make(InTree(name));
        ExpectOnlyTheTree(Listed(Found({directory / "tree"})), kind);
        fs::remove_all(InTree(name));
    }
}

// Such names can be created and printed, although no program can open them by their paths.
TEST_F(NamesWithLineBreaks, MayBeLongerThanAnyPath)
{
    const std::string part(250, 'd');
    int level = ::open((directory / "tree").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const auto descend = [&level](const std::string& name) {
        ::mkdirat(level, name.c_str(), 0700);
        const int next = ::openat(level, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ASSERT_GE(next, 0);
        ::close(level);
        level = next;
    };
    for (int depth = 0; depth < 18; ++depth)
        descend(part);
    descend("x.h\n");
    const std::string secret = directory / "home/secret.h";
    for (size_t start = 1, end; start != 0; start = end + 1) {
        end = secret.find('/', start);
        if (end == std::string::npos)
            break;
        descend(secret.substr(start, end - start));
    }
    ::close(::openat(level, "secret.h", O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    ::close(level);
    const std::string found = Found({directory / "tree"});
    ASSERT_NE(found.find("\n" + secret + "\n"), std::string::npos);
    ExpectOnlyTheTree(Listed(found), "long");
    EXPECT_EQ(RunProgram({"/bin/rm", "-rf", directory / "tree"}, "/").status, 0);
}

TEST_F(NamesWithLineBreaks, MayBeginInTheTreesOwnName)
{
    for (const char* kind : {"nothing", "a file", "a directory"}) {
        const TempDirectory other;
        const std::string tree = other / "proj.h\nx";
        other.Write("proj.h\nx/a.h", "");
        other.Write("proj.h\nx/y.h\n" + directory / "home/secret.h", "");
        other.Write("beside.h", "");
        fs::create_directories(other / "proj.h\nx/y.h\n" + other.Path());
        other.Write("proj.h\nx/y.h\n" + other / "beside.h", "");
        fs::create_symlink("none", other / "proj.h\nx/link.h");
        if (kind == std::string("a file"))
            other.Write("proj.h", "");
        if (kind == std::string("a directory"))
            fs::create_directory(other / "proj.h");
        const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        const std::string list = other.Write("list", Found({tree}));
        const int file = ::open(list.c_str(), O_RDONLY | O_CLOEXEC);
        Names paths;
        {
            Progress progress(nowhere);
            FileList files({}, file, "/", tree, progress, [] { return true; });
            for (std::string name; files.Next(name);)
                paths.push_back(name);
        }
        ::close(file);
        ::close(nowhere);
        for (const std::string& path : paths)
            EXPECT_EQ(path.rfind(tree + "/", 0), 0u) << kind << ": " << path;
        EXPECT_EQ(std::count(paths.begin(), paths.end(), tree + "/a.h"), 1) << kind;
    }
}

TEST_F(NamesWithLineBreaks, AreTaggedWherePossible)
{
    for (const char* leaf :
         {"odd\nname.h", "very\n\nodd\n\n\nname.h", "dir\nectory/b.h", "dir\nectory/more/c.h", "dir.h/d.h"})
        directory.Write(std::string("tree/") + leaf, "");
    EXPECT_EQ(Listed(Found({directory / "tree"})),
              (Names{"tree/dir\nectory/b.h", "tree/dir\nectory/more/c.h", "tree/dir.h/d.h", "tree/odd\nname.h",
                     "tree/s/a.h", "tree/very\n\nodd\n\n\nname.h", "tree/z/b.h"}));
}

// In lists of names without line breaks, every file is tagged wherever it is.
TEST_F(NamesWithLineBreaks, AreNotSeenInListsOfOrdinaryNames)
{
    const std::string tree = directory / "tree";
    const std::string home = directory / "home";
    const struct {
        const char* why;
        std::string list;
        Names paths;
    } cases[] = {
        {"several starts",
         Found({tree, home, "."}),
         {"cwd/secret.h", "home/below/secret.h", "home/secret.h", "tree/s/a.h", "tree/z/b.h"}},
        {"starts with / behind them, or to be tidied",
         Found({tree + "/", home + "//below", "../cwd/."}),
         {"cwd/secret.h", "home/below/secret.h", "tree/s/a.h", "tree/z/b.h"}},
        {"a hand-written list",
         "secret.h\n../home/secret.h\n" + tree + "/s/a.h\n\n../tree/z/b.h\n" + home + "/below/secret.h",
         {"cwd/secret.h", "home/below/secret.h", "home/secret.h", "tree/s/a.h", "tree/z/b.h"}},
        {"missing files and directories in between",
         tree + "\n" + tree + "/none.h\n/none/x.h\n" + home + "\nsecret.h\n" + home + "/secret.h",
         {"cwd/secret.h", "home/secret.h"}},
        {"names without directories behind others", tree + "/s/a.h\nsecret.h\n", {"cwd/secret.h", "tree/s/a.h"}},
        {"a line that is no name",
         std::string(3000, 'x') + "\n" + home + "/secret.h\nsecret.h\n",
         {"cwd/secret.h", "home/secret.h"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Listed(c.list), c.paths) << c.why;
}

} // namespace
} // namespace cplustags
