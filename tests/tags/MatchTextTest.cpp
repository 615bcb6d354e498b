#include "tags/MatchText.h"

#include "tests/support/TagLines.h"
#include "vetch/storage/Home.h"

#include <gtest/gtest.h>

namespace {

EntryRef Ref(const char* path)
{
    return path == nullptr ? EntryRef() : EntryRef(path);
}

struct OrderCase {
    const char* why;
    const char* a;
    const char* b;
    bool before;
};

const OrderCase kOrderCases[] = {
    {"by leaf name", "/z/a.h", "/a/b.h", true},
    {"not the other way round", "/a/b.h", "/z/a.h", false},
    {"equal names are not before each other", "/a/a.h", "/b/a.h", false},
    {"bytes: capitals first", "/a/B.h", "/a/a.h", true},
    {"bytes from 0x80 up come after all others", "/a/z.h", "/a/\xc3\xa9.h", true},
    {"a name before none", "/a/a.h", nullptr, true},
    {"none is before no name", nullptr, "/a/a.h", false},
    {"none is not before none", nullptr, nullptr, false},
};

TEST(MatchEntryName, OrdersByFileName)
{
    for (const OrderCase& row : kOrderCases) {
        const EntryRef a = Ref(row.a);
        const EntryRef b = Ref(row.b);
        EXPECT_EQ(MatchEntryName(&a, &b), row.before) << row.why;
    }
}

struct FileCase {
    const char* why;
    std::vector<const char*> paths;
    bool ambiguous;
};

const FileCase kFileCases[] = {
    {"no match", {}, false},
    {"one", {"/a/util.h"}, false},
    {"two names", {"/a/util.h", "/b/view.h"}, false},
    {"twice the same file", {"/a/util.h", "/a/util.h"}, false},
    {"two files of one name", {"/a/util.h", "/b/util.h"}, true},
    {"far from each other", {"/a/util.h", "/a/a.h", "/a/z.h", "/b/util.h"}, true},
    {"among repetitions", {"/a/util.h", "/b/util.h", "/a/util.h"}, true},
    {"names nothing, twice", {nullptr, nullptr}, false},
    {"names nothing, beside a name", {nullptr, "/a/util.h"}, false},
    {"case counts", {"/a/util.h", "/b/Util.h"}, false},
};

TEST(FileNamesAreAmbiguous, IsTrueWhenDifferentFilesShareAName)
{
    for (const FileCase& row : kFileCases) {
        std::vector<TagData> matches;
        for (const char* path : row.paths) {
            matches.emplace_back();
            matches.back().file = Ref(path);
        }
        EXPECT_EQ(FileNamesAreAmbiguous(matches), row.ambiguous) << row.why;
    }
}

struct TextCase {
    const char* why;
    char kind;
    const char* qualifier;
    const char* text;
};

const TextCase kTextCases[] = {
    {"a function's scope is shown", 'f', "View", "View::draw - view.h"},
    {"so is a prototype's", 'p', "View", "View::draw - view.h"},
    {"and a typedef's", 't', "View", "View::draw - view.h"},
    {"no scope, no colons", 'f', "", "draw - view.h"},
    {"no scope, no colons", 'p', "", "draw - view.h"},
    {"no scope, no colons", 't', "", "draw - view.h"},
    {"an Objective-C class", 'X', "View", "interface draw - view.h"},
    {"a class shows no scope", 'c', "View", "class draw - view.h"},
    {"a namespace shows no scope", 'n', "View", "namespace draw - view.h"},
    {"a struct shows no scope", 's', "View", "struct draw - view.h"},
    {"a union shows no scope", 'u', "View", "union draw - view.h"},
    {"a member shows nothing of its scope", 'm', "View", "draw - view.h"},
    {"an Objective-C method neither", 'o', "View", "draw - view.h"},
    {"an Objective-C class method neither", 'O', "View", "draw - view.h"},
    {"the reader's kind of a line without one", '\n', "View", "draw - view.h"},
    {"no kind", 0, "View", "draw - view.h"},
};

TEST(MatchText, ShowsNameKindAndFile)
{
    const EntryRef file("/src/lib/view.h");
    for (const TextCase& row : kTextCases)
        EXPECT_EQ(MatchText({"draw", row.qualifier, file, 12, row.kind}, false, ""), row.text)
            << row.why << ": " << row.kind;
}

TEST(MatchText, ShowsTheDirectoryBehindTheFile)
{
    const TempHome home;
    const EntryRef inHome((home / "src/lib/geom.h").c_str());
    EXPECT_EQ(MatchText({"Point", "", inHome, 3, 's'}, true, Home()), "struct Point : geom.h - ~/src/lib");
    const EntryRef elsewhere("/opt/thing/geom.h");
    EXPECT_EQ(MatchText({"draw", "View", elsewhere, 3, 'f'}, true, Home()), "View::draw : geom.h - /opt/thing");
    const EntryRef inRoot("/geom.h");
    EXPECT_EQ(MatchText({"draw", "", inRoot, 3, 'f'}, true, Home()), "draw : geom.h - /");
}

TEST(MatchText, FollowsALinkToTheFilesRealDirectory)
{
    const TempHome home;
    home.Write("real/geom.h", "");
    std::filesystem::create_directory(home / "links");
    std::filesystem::create_symlink(home / "real/geom.h", home / "links/alias.h");
    const EntryRef link((home / "links/alias.h").c_str());
    EXPECT_EQ(MatchText({"Point", "", link, 3, 's'}, true, Home()), "struct Point : alias.h - ~/real");
}

TEST(MatchText, ShowsNothingForAnEmptyReference)
{
    EXPECT_EQ(MatchText({"draw", "", EntryRef(), 3, 'f'}, false, Home()), "draw - ");
    EXPECT_EQ(MatchText({"draw", "", EntryRef(), 3, 'f'}, true, Home()), "draw :  - ");
}

TEST(MatchText, ShortensNothingWithoutAHome)
{
    EXPECT_EQ(MatchText({"draw", "", EntryRef("/home/u/view.h"), 3, 'f'}, true, ""), "draw : view.h - /home/u");
}

struct PathCase {
    const char* why;
    const char* path;
    const char* shown;
};

const PathCase kPathCases[] = {
    {"below the home directory", "/home/u/src/lib", "~/src/lib"},
    {"the home directory itself has no slash behind it", "/home/u", "/home/u"},
    {"another user's", "/home/uu/src", "/home/uu/src"},
    {"met in the middle of a path it is shortened too", "/backup/home/u/src", "/backup~/src"},
    {"only once", "/home/u/home/u/src", "~/home/u/src"},
    {"system frameworks", "/System/Library/Frameworks/AppKit.framework/Headers", "/Sys...ks/AppKit.framework/Headers"},
    {"only once", "/System/Library/Frameworks/System/Library/Frameworks/x", "/Sys...ks/System/Library/Frameworks/x"},
    {"frameworks copied into the home directory: both", "/home/u/System/Library/Frameworks/x", "~/Sys...ks/x"},
    {"both, where both are there", "/home/u/sdk/System/Library/Frameworks/x", "~/sdk/Sys...ks/x"},
    {"neither", "/usr/include", "/usr/include"},
};

TEST(MakeDisplayPath, AbbreviatesKnownDirectories)
{
    const TempHome keepsHome;
    ::setenv("HOME", "/home/u", 1);
    for (const PathCase& row : kPathCases)
        EXPECT_EQ(MakeDisplayPath(row.path), row.shown) << row.why;
}

TEST(MakeDisplayPath, NeedsNoHome)
{
    const TempHome keepsHome;
    ::unsetenv("HOME");
    EXPECT_EQ(MakeDisplayPath("/home/u/src"), "/home/u/src");
}

} // namespace
