#include "windows/LookupItem.h"

#include "tests/support/TagLines.h"

#include <gtest/gtest.h>

namespace {

struct Text {
    const char* why;
    char kind;
    const char* qualifier;
    const char* text;
};

const Text kTexts[] = {
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

TEST(LookupItem, ShowsNameKindAndFile)
{
    const EntryRef file("/src/lib/view.h");
    for (const Text& row : kTexts)
        EXPECT_STREQ(LookupItem("draw", row.qualifier, row.kind, 12, file, false).Text(), row.text)
            << row.why << ": " << row.kind;
}

TEST(LookupItem, ShowsTheDirectoryBehindTheFile)
{
    const TempHome home;
    const EntryRef inHome((home / "src/lib/geom.h").c_str());
    EXPECT_STREQ(LookupItem("Point", "", 's', 3, inHome, true).Text(), "struct Point : geom.h - ~/src/lib");
    const EntryRef elsewhere("/opt/thing/geom.h");
    EXPECT_STREQ(LookupItem("draw", "View", 'f', 3, elsewhere, true).Text(), "View::draw : geom.h - /opt/thing");
    const EntryRef inRoot("/geom.h");
    EXPECT_STREQ(LookupItem("draw", "", 'f', 3, inRoot, true).Text(), "draw : geom.h - /");
}

TEST(LookupItem, FollowsALinkToTheFilesRealDirectory)
{
    const TempHome home;
    home.Write("real/geom.h", "");
    std::filesystem::create_directory(home / "links");
    std::filesystem::create_symlink(home / "real/geom.h", home / "links/alias.h");
    const EntryRef link((home / "links/alias.h").c_str());
    EXPECT_STREQ(LookupItem("Point", "", 's', 3, link, true).Text(), "struct Point : alias.h - ~/real");
}

TEST(LookupItem, ShowsNothingForAnEmptyReference)
{
    EXPECT_STREQ(LookupItem("draw", "", 'f', 3, EntryRef(), false).Text(), "draw - ");
    EXPECT_STREQ(LookupItem("draw", "", 'f', 3, EntryRef(), true).Text(), "draw :  - ");
}

TEST(LookupItem, RemembersItsMatch)
{
    const EntryRef file("/src/lib/view.h");
    const LookupItem item("draw", "View", 'f', 12, file, true);
    EXPECT_EQ(item.Entry().name, "draw");
    EXPECT_EQ(item.Entry().qualifier, "View");
    EXPECT_EQ(item.Entry().kind, 'f');
    EXPECT_EQ(item.Entry().line, 12);
    EXPECT_TRUE(item.Entry().file == file);
}

struct Shortened {
    const char* why;
    const char* path;
    const char* shown;
};

const Shortened kPaths[] = {
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
    for (const Shortened& row : kPaths)
        EXPECT_EQ(MakeDisplayPath(row.path), row.shown) << row.why;
}

TEST(MakeDisplayPath, NeedsNoHome)
{
    const TempHome keepsHome;
    ::unsetenv("HOME");
    EXPECT_EQ(MakeDisplayPath("/home/u/src"), "/home/u/src");
}

} // namespace
