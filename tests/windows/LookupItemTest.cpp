#include "windows/SearchWindow.h"

#include "tests/support/TagLines.h"

#include <gtest/gtest.h>

namespace {

TEST(LookupItem, ShowsItsMatchWithTheUsersHomeShortened)
{
    const TempHome home;
    const EntryRef inHome((home / "src/lib/geom.h").c_str());
    EXPECT_STREQ(LookupItem("draw", "View", 'f', 3, inHome, false).Text(), "View::draw - geom.h");
    EXPECT_STREQ(LookupItem("Point", "", 's', 3, inHome, true).Text(), "struct Point : geom.h - ~/src/lib");
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

} // namespace
