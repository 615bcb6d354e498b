#include "tags/TagDiscovery.h"

#include "tags/TagFile.h"
#include "tags/TargetDirectory.h"
#include "tests/support/Environment.h"
#include "tests/support/FakeHost.h"
#include "tests/tags/TagsFolder.h"
#include "vetch/storage/BPath.h"

#include <cstdlib>
#include <functional>
#include <optional>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string PathOf(const BEntry& entry)
{
    return BPath(&entry).Path();
}

// A temporary home directory.
class HomeDirectory : public testing::Test {
protected:
    HomeDirectory()
    {
        if (const char* home = std::getenv("HOME"))
            before = home;
        setenv("HOME", home.Path().c_str(), 1);
    }
    ~HomeDirectory() override
    {
        if (before)
            setenv("HOME", before->c_str(), 1);
        else
            unsetenv("HOME");
    }
    std::string MakeSystemTags() const { return home.Write("Library/Caches/SystemHeaderTags", ""); }
    std::string SystemTags() const { return home / "Library/Caches/SystemHeaderTags"; }

    TempDirectory home;
    TempDirectory work;

private:
    std::optional<std::string> before;
};

using FindTagsForDirectory = HomeDirectory;
using FindTagsForDocument = HomeDirectory;
using FindSystemTagsTest = HomeDirectory;

std::string Found(const std::string& start)
{
    BEntry entry(start.c_str());
    const bool found = FindTags(&entry);
    EXPECT_EQ(found, entry.InitCheck() == B_OK);
    return PathOf(entry);
}

// Runs 'work' in a process with 'root' as its root directory. Returns the process's status; nullopt if that is not
// allowed.
std::optional<int> RunWithRoot(const std::string& root, const std::function<int()>& work)
{
    constexpr int kNotAllowed = 99;
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        if (chroot(root.c_str()) != 0 && (unshare(CLONE_NEWUSER) != 0 || chroot(root.c_str()) != 0))
            _exit(kNotAllowed);
        _exit(chdir("/") == 0 ? work() : kNotAllowed);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status) == kNotAllowed ? std::nullopt : std::optional<int>(WEXITSTATUS(status));
}

} // namespace

TEST(FindTags, SearchesTheDirectoryAndItsParents)
{
    const TempDirectory top;
    const std::string tags = top.Write("tags", "");
    top.Write("a/b/source.cpp", "");
    EXPECT_EQ(Found(top.Path()), tags);
    EXPECT_EQ(Found(top / "a"), tags);
    EXPECT_EQ(Found(top / "a/b"), tags);

    const std::string nearer = top.Write("a/tags", "");
    EXPECT_EQ(Found(top / "a/b"), nearer);
    EXPECT_EQ(Found(top.Path()), tags) << "never in those below";
}

TEST(FindTags, TakesAnyKindOfEntryWithTheExactName)
{
    const TempDirectory top;
    const std::string tags = top.Write("tags", "");
    top.Write("one/TAGS", "");
    top.Write("one/tags.old", "");
    EXPECT_EQ(Found(top / "one"), tags);

    std::filesystem::create_directories(top / "two/tags");
    EXPECT_EQ(Found(top / "two"), top / "two/tags") << "a directory counts";

    std::filesystem::create_directories(top / "three");
    std::filesystem::create_symlink("nowhere", top / "three/tags");
    BEntry entry((top / "three").c_str());
    EXPECT_TRUE(FindTags(&entry)) << "a link counts, wherever it leads";
    EXPECT_EQ(PathOf(entry), top / "three/tags");

    std::filesystem::create_directories(top / "four");
    std::filesystem::create_symlink(tags, top / "four/tags");
    EXPECT_EQ(Found(top / "four"), top / "four/tags") << "and is not followed";
}

TEST(FindTags, WalksUpFromTheLinkRatherThanItsTarget)
{
    const TempDirectory top;
    top.Write("real/tags", "");
    std::filesystem::create_directories(top / "real/inner");
    const std::string tags = top.Write("seen/tags", "");
    std::filesystem::create_symlink(top / "real/inner", top / "seen/link");
    EXPECT_EQ(Found(top / "seen/link"), tags);
}

TEST(FindTags, NeedsAStartDirectory)
{
    const TempDirectory top;
    top.Write("tags", "");
    top.Write("source.cpp", "");
    EXPECT_EQ(Found(top / "source.cpp"), "") << "a file";
    EXPECT_EQ(Found(top / "none"), "") << "nothing there";
    BEntry unset;
    EXPECT_FALSE(FindTags(&unset));
}

TEST(FindTags, SearchesTheRootToo)
{
    const TempDirectory root;
    root.Write("tags", TagLine("Foo", "a/source.cpp", 12, "f"));
    root.Write("a/b/x", "");
    root.Write("a/source.cpp", "int Foo();\n");
    const auto status = RunWithRoot(root.Path(), [] {
        BEntry entry("/a/b");
        if (!FindTags(&entry) || PathOf(entry) != "/tags")
            return 1;
        return Matches(entry, "Foo") == Lines{"Foo f source.cpp:12"} ? 0 : 2;
    });
    if (!status)
        GTEST_SKIP() << "another root directory is not allowed here";
    EXPECT_EQ(*status, 0) << "1: not found, 2: its relative paths are not taken from the root";
}

TEST(FindTags, StopsAtTheRoot)
{
    const TempDirectory root;
    root.Write("a/b/x", "");
    const auto status = RunWithRoot(root.Path(), [] {
        BEntry entry("/a/b");
        return FindTags(&entry) || PathOf(entry) != "" ? 1 : 0;
    });
    if (!status)
        GTEST_SKIP() << "another root directory is not allowed here";
    EXPECT_EQ(*status, 0);
}

TEST_F(FindSystemTagsTest, TakesAnotherFileThanTheUsers)
{
    MakeSystemTags();
    const std::string other = work.Write("other", "");
    BEntry entry;
    EXPECT_TRUE(FindSystemTags(&entry, other.c_str()));
    EXPECT_EQ(PathOf(entry), other);
    EXPECT_FALSE(FindSystemTags(&entry, (work / "missing").c_str()));
}

TEST_F(FindSystemTagsTest, FindsTheFileAtItsPlaceInTheHomeDirectory)
{
    BEntry entry;
    EXPECT_FALSE(FindSystemTags(&entry));
    EXPECT_EQ(PathOf(entry), SystemTags()) << "the place is known even when nothing is there";
    MakeSystemTags();
    EXPECT_TRUE(FindSystemTags(&entry));
    EXPECT_EQ(PathOf(entry), SystemTags());
}

TEST_F(FindSystemTagsTest, FollowsALink)
{
    const std::string elsewhere = work.Write("elsewhere", "");
    std::filesystem::create_directories(home / "Library/Caches");
    std::filesystem::create_symlink(elsewhere, SystemTags());
    BEntry entry;
    EXPECT_TRUE(FindSystemTags(&entry));
    EXPECT_EQ(PathOf(entry), elsewhere);
}

TEST_F(FindSystemTagsTest, ReportsAMissingHomeDirectory)
{
    for (const char* home : {static_cast<const char*>(nullptr), ""}) {
        SetVariable("HOME", home);
        BEntry entry(work.Path().c_str());
        testing::internal::CaptureStdout();
        const bool found = FindSystemTags(&entry);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "No $HOME!");
        EXPECT_FALSE(found);
        EXPECT_EQ(PathOf(entry), work.Path()) << "left as it was";
    }
}

TEST_F(FindTagsForDirectory, IsTrueWhenOneOfTheFilesExists)
{
    BEntry local;
    BEntry system;
    EXPECT_FALSE(FindTags(work.Path().c_str(), local, system));
    EXPECT_EQ(local.InitCheck(), B_ERROR) << "unset";
    EXPECT_EQ(PathOf(system), SystemTags());

    MakeSystemTags();
    EXPECT_TRUE(FindTags(work.Path().c_str(), local, system));
    EXPECT_EQ(PathOf(local), "");

    const std::string tags = work.Write("tags", "");
    EXPECT_TRUE(FindTags(work.Path().c_str(), local, system));
    EXPECT_EQ(PathOf(local), tags);
    EXPECT_EQ(PathOf(system), SystemTags());

    std::filesystem::remove(SystemTags());
    EXPECT_TRUE(FindTags(work.Path().c_str(), local, system));
}

TEST_F(FindTagsForDirectory, FollowsALinkToTheDirectory)
{
    work.Write("real/tags", "");
    std::filesystem::create_directories(work / "real/inner");
    work.Write("seen/tags", "");
    std::filesystem::create_symlink(work / "real/inner", work / "seen/link");
    BEntry local;
    BEntry system;
    EXPECT_TRUE(FindTags((work / "seen/link").c_str(), local, system));
    EXPECT_EQ(PathOf(local), work / "real/tags");
}

TEST_F(FindTagsForDocument, StartsBesideTheDocument)
{
    const std::string tags = work.Write("tags", "");
    FakeHost host;
    host.file = EntryRef(work.Write("src/source.cpp", "").c_str());
    BEntry local;
    BEntry system;
    EXPECT_TRUE(FindTags(&host, local, system));
    EXPECT_EQ(PathOf(local), tags);
}

TEST_F(FindTagsForDocument, ADocumentWithoutAFileHasOnlyTheSystemTags)
{
    FakeHost host;
    BEntry local(work.Path().c_str());
    BEntry system;
    EXPECT_FALSE(FindTags(&host, local, system));
    EXPECT_EQ(local.InitCheck(), B_ERROR);
    MakeSystemTags();
    EXPECT_TRUE(FindTags(&host, local, system));
}

TEST_F(FindTagsForDocument, TheWorksheetHasItsOwnDirectory)
{
    const std::string tags = work.Write("sheet/tags", "");
    FakeHost host;
    host.file = EntryRef(home.Write("Worksheet", "").c_str());
    host.worksheet = true;
    host.worksheetDirectory = work / "sheet";
    BEntry local;
    BEntry system;
    EXPECT_TRUE(FindTags(&host, local, system));
    EXPECT_EQ(PathOf(local), tags);
}

TEST(TargetDirectory, IsTheDocumentsOrTheWorksheetsDirectory)
{
    const TempDirectory work;
    std::filesystem::create_directories(work / "real");
    std::filesystem::create_symlink(work / "real", work / "link");
    work.Write("real/source.cpp", "");
    std::filesystem::create_symlink(work / "real/source.cpp", work / "source-link.cpp");
    const struct {
        const char* why;
        std::string document;
        bool isWorksheet;
        std::string worksheetDirectory;
        std::string expected;
    } kCases[] = {
        {"beside the document", work / "real/source.cpp", false, "", work / "real"},
        {"a link to the document is followed", work / "source-link.cpp", false, "", work / "real"},
        {"a document that is not saved yet", work / "new.cpp", false, "", work.Path()},
        {"a document without a file", "", false, work / "real", ""},
        {"the Worksheet's, following links", work / "source-link.cpp", true, work / "link", work / "real"},
        {"a Worksheet without a directory", work / "source-link.cpp", true, "", ""},
    };
    for (const auto& c : kCases) {
        FakeHost host;
        host.file = EntryRef(c.document.c_str());
        host.worksheet = c.isWorksheet;
        host.worksheetDirectory = c.worksheetDirectory;
        BEntry directory("/old");
        GetTargetParentDir(&host, directory);
        EXPECT_EQ(PathOf(directory), c.expected) << c.why;
    }
}

TEST(TargetDirectory, TheHostMayReturnNoWorksheetDirectory)
{
    class Unable : public FakeHost {
        char* ExpandVariables(const char* text, long length) override
        {
            EXPECT_STREQ(text, "$WORKSHEET_DIR");
            EXPECT_EQ(length, -1);
            return nullptr;
        }
    } host;
    host.worksheet = true;
    BEntry directory("/old");
    GetTargetParentDir(&host, directory);
    EXPECT_EQ(PathOf(directory), "");
}

namespace {

bool EndsWith(const std::string& path, const std::string& suffix)
{
    return PathEndsWith(path.c_str(), static_cast<int>(path.length()), suffix.c_str(),
                        static_cast<int>(suffix.length()));
}

bool Means(const std::string& path, const std::string& pattern)
{
    return MatchesPath(path.c_str(), static_cast<int>(path.length()), pattern.c_str(),
                       static_cast<int>(pattern.length()));
}

} // namespace

TEST(PathEndsWith, ComparesWholeComponents)
{
    const struct {
        const char* why;
        const char* path;
        const char* suffix;
        bool ends;
    } kCases[] = {
        {"a part of a name", "/a/bc.h", "c.h", false},
        {"a name", "/a/bc.h", "bc.h", true},
        {"two components", "/a/bc.h", "a/bc.h", true},
        {"the whole path", "/a/bc.h", "/a/bc.h", true},
        {"from a slash on, which no slash precedes", "/a/bc.h", "/bc.h", false},
        {"longer than the path", "bc.h", "/bc.h", false},
        {"the same length, another name", "/a/bc.h", "/a/bd.h", false},
        {"a relative path as a whole", "bc.h", "bc.h", true},
        {"nothing, of a name", "/a/bc.h", "", false},
        {"nothing, of a directory", "/a/", "", true},
        {"nothing of nothing", "", "", true},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(EndsWith(c.path, c.suffix), c.ends) << c.why;
}

TEST(MatchesPath, AcceptsTheEndOfAPathOrAFrameworkHeader)
{
    const char kView[] = "/S/L/F/AppKit.framework/Headers/NSView.h";
    const struct {
        const char* why;
        const char* path;
        const char* pattern;
        bool matches;
    } kCases[] = {
        {"the end", "/usr/include/sys/stat.h", "sys/stat.h", true},
        {"not the end of a component", "/usr/include/sys/stat.h", "tat.h", false},
        {"a framework's header", kView, "AppKit/NSView.h", true},
        {"another framework", kView, "Foundation/NSView.h", false},
        {"a folder that is not there", kView, "AppKit/Sub/NSView.h", false},
        {"a folder below the headers", "/S/AppKit.framework/Headers/Sub/NSView.h", "AppKit/Sub/NSView.h", false},
        {"another header", kView, "AppKit/NSButton.h", false},
        {"the end of a framework's name", kView, "Kit/NSView.h", false},
        {"a header of another framework inside", "/F/AppKit.framework/Frameworks/B.framework/H/b.h", "AppKit/b.h",
         true},
        {"a folder of that name is no framework", "/S/AppKit/Headers/NSView.h", "AppKit/NSView.h", false},
        {"nothing behind the slash", "/S/AppKit.framework/", "AppKit/", false},
        {"nothing behind the slash, although the path ends so", "/S/AppKit.framework/X", "X/", false},
        {"nothing in front of the slash", "/S/.framework/X", "/X", true},
        {"longer than the path", "/X", "longer/X", false},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(Means(c.path, c.pattern), c.matches) << c.why;
}
