#include "cplustags/FileList.h"

#include "cplustags/Progress.h"
#include "tests/support/OrdinaryRights.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace cplustags {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class Pipe {
public:
    Pipe() { EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0); }
    ~Pipe()
    {
        ::close(ends[0]);
        Close();
    }
    int Reading() const { return ends[0]; }
    int Writing() const { return ends[1]; }
    void Write(const std::string& text) const
    {
        EXPECT_EQ(::write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void Close()
    {
        if (ends[1] >= 0)
            ::close(ends[1]);
        ends[1] = -1;
    }
    std::string ReadAll()
    {
        Close();
        std::string text(64 * 1024, '\0');
        text.resize(std::max<ssize_t>(0, ::read(ends[0], text.data(), text.size())));
        return text;
    }

private:
    int ends[2];
};

bool GoOn()
{
    return true;
}

struct Listing {
    Names paths;
    std::string messages;
    size_t missing = 0;
    size_t unreadable = 0;
    bool hasNames = false;
};

enum class Reader { Anybody, NotRoot };

// The files found for a command line and the text of a list; relative names start at 'directory'.
Listing List(const TempDirectory& directory, const Names& files, const std::string& list,
             Reader reader = Reader::Anybody, const std::string& tree = "")
{
    const fs::path before = fs::current_path();
    fs::current_path(directory.Path());
    Listing listing;
    Pipe names;
    Pipe messages;
    names.Write(list);
    names.Close();
    {
        std::optional<OrdinaryRights> rights;
        if (reader == Reader::NotRoot)
            rights.emplace();
        Progress progress(messages.Writing());
        FileList all(files, names.Reading(), directory.Path(), tree.empty() ? directory.Path() : tree, progress, GoOn);
        for (std::string path; all.Next(path);)
            listing.paths.push_back(path.rfind(directory / "", 0) == 0 ? path.substr((directory / "").size()) : path);
        listing.missing = all.Missing();
        listing.unreadable = all.Unreadable();
        listing.hasNames = all.HasNames();
    }
    listing.messages = messages.ReadAll();
    fs::current_path(before);
    return listing;
}

TEST(FileList, GivesTheFilesOfTheCommandLineThenThoseOfTheList)
{
    const TempDirectory directory;
    for (const char* name : {"a.c", "b.c", "c.c", "s/d e.c", "back\\slash.c", "\xff.c", "-x.c"})
        directory.Write(name, "");
    const Listing listing =
        List(directory, {"b.c"}, "a.c\n\n" + directory / "c.c" + "\n./s/d e.c\nback\\slash.c\n\xff.c\n\n-x.c");
    EXPECT_EQ(listing.paths, (Names{"b.c", "a.c", "c.c", "s/d e.c", "back\\slash.c", "\xff.c", "-x.c"}))
        << "the last line has no break";
    EXPECT_EQ(listing.messages, "");
    EXPECT_TRUE(listing.hasNames);
}

TEST(FileList, GivesAFileOnceUnderAllItsNames)
{
    const TempDirectory directory;
    directory.Write("a.c", "");
    EXPECT_EQ(List(directory, {"a.c"}, "./a.c\na.c\n" + directory / "a.c\n").paths, Names{"a.c"});
}

TEST(FileList, SkipsEntriesThatAreNotFiles)
{
    const TempDirectory directory;
    directory.Write("d.h/a.c", "");
    ASSERT_EQ(::mkfifo((directory / "pipe.c").c_str(), 0600), 0);
    fs::create_symlink("d.h/a.c", directory / "link.c");
    const Listing listing = List(directory, {}, "d.h\npipe.c\n/dev/null\n/dev/zero\nlink.c\n");
    EXPECT_EQ(listing.paths, Names{"link.c"});
    EXPECT_EQ(listing.messages, "");
    EXPECT_EQ(listing.missing + listing.unreadable, 0u);
}

TEST(FileList, ReportsMissingFiles)
{
    const TempDirectory directory;
    directory.Write("a.c", "");
    fs::create_symlink("loop.c", directory / "loop.c");
    const std::string withZero("a.c\0b.c\n", 8);
    const Listing listing = List(directory, {"none.c"}, "gone\x1b.c\nloop.c\na.c\n" + withZero);
    EXPECT_EQ(listing.paths, Names{"a.c"});
    EXPECT_EQ(listing.missing, 3u);
    EXPECT_EQ(listing.unreadable, 1u);
    EXPECT_EQ(listing.messages, "cplustags: cannot read none.c: No such file or directory\n"
                                "cplustags: cannot read gone\\x1b.c: No such file or directory\n"
                                "cplustags: cannot read loop.c: Too many levels of symbolic links\n"
                                "cplustags: cannot read a.c\\x00b.c: No such file or directory\n");
}

TEST(FileList, ReportsUnreadableFiles)
{
    const TempDirectory directory;
    fs::permissions(directory.Write("secret.c", ""), fs::perms::none);
    const Listing listing = List(directory, {"secret.c"}, "", Reader::NotRoot);
    EXPECT_EQ(listing.paths, Names{});
    EXPECT_EQ(listing.unreadable, 1u);
    EXPECT_EQ(listing.messages, "cplustags: cannot read secret.c: Permission denied\n");
}

TEST(FileList, JoinsTheLinesOfANameWithLineBreaks)
{
    const TempDirectory directory;
    for (const char* name : {"a.c", "odd\nname.c", "very\n\nodd\n\n\nname.c", "dir\nectory/b.c", "dir/c.c", "z.c"})
        directory.Write(name, "");
    const Listing listing =
        List(directory, {}, "a.c\nodd\nname.c\nvery\n\nodd\n\n\nname.c\ndir\nectory/b.c\ndir\ndir/c.c\nz.c");
    EXPECT_EQ(listing.paths,
              (Names{"a.c", "odd\nname.c", "very\n\nodd\n\n\nname.c", "dir\nectory/b.c", "dir/c.c", "z.c"}))
        << "\"dir\" is a directory, and the beginning of another's name";
    EXPECT_EQ(listing.messages, "");
}

TEST(FileList, LooksForTheRestOfANameInAFewLinesOnly)
{
    const TempDirectory directory;
    std::string longName = "odd";
    for (int line = 0; line < 30; ++line)
        longName += "\nx";
    directory.Write(longName, "");
    directory.Write("a.c", "");
    const Listing listing = List(directory, {}, "a.c\n" + longName + "\na.c\n");
    EXPECT_EQ(listing.paths, Names{"a.c"});
    EXPECT_EQ(listing.missing, 31u);
}

TEST(FileList, AnEndlessLineDoesNotFillTheMemory)
{
    const TempDirectory directory;
    directory.Write("a.c", "");
    Pipe names;
    Pipe messages;
    std::thread writer([&names] {
        for (int count = 0; count < 64; ++count)
            names.Write(std::string(64 * 1024, 'x'));
        names.Write("\n");
        names.Close();
    });
    Progress progress(messages.Writing());
    FileList files({}, names.Reading(), directory.Path(), directory.Path(), progress, GoOn);
    std::string path;
    EXPECT_FALSE(files.Next(path));
    writer.join();
    EXPECT_EQ(files.Missing() + files.Unreadable(), 1u);
    EXPECT_LT(messages.ReadAll().size(), 2000u);
}

TEST(FileList, GivesFilesWhileTheListIsBeingWritten)
{
    const TempDirectory directory;
    directory.Write("a.c", "");
    directory.Write("b.c", "");
    Pipe names;
    Progress progress(STDERR_FILENO);
    FileList files({}, names.Reading(), directory.Path(), directory.Path(), progress, GoOn);
    std::string path;
    names.Write(directory / "a.c" + "\n");
    ASSERT_TRUE(files.Next(path));
    EXPECT_EQ(path, directory / "a.c");
    names.Write(directory / "b.c"); // not yet a complete line
    names.Close();
    ASSERT_TRUE(files.Next(path));
    EXPECT_EQ(path, directory / "b.c");
    EXPECT_FALSE(files.Next(path));
}

TEST(FileList, EndsWhenItIsCancelled)
{
    const TempDirectory directory;
    Pipe names; // no writer, but not closed
    Progress progress(STDERR_FILENO);
    int asked = 0;
    FileList files({}, names.Reading(), directory.Path(), directory.Path(), progress, [&asked] { return ++asked < 2; });
    std::string path;
    EXPECT_FALSE(files.Next(path));
    EXPECT_EQ(asked, 2);
}

TEST(FileList, SaysWhenTheListItselfCannotBeRead)
{
    const TempDirectory directory;
    const int list = ::open(directory.Path().c_str(), O_RDONLY | O_CLOEXEC);
    Progress progress(STDERR_FILENO);
    FileList files({}, list, directory.Path(), directory.Path(), progress, GoOn);
    std::string path;
    EXPECT_FALSE(files.Next(path));
    EXPECT_EQ(files.Error(), "Is a directory");
    ::close(list);
}

} // namespace
} // namespace cplustags
