#include "wren/cli/symbols/SymbolRow.h"

#include <gtest/gtest.h>

TEST(ShownPath, Cases)
{
    EXPECT_EQ(wren::ShownPath("/a/b/c.h", "/a/b"), "c.h");
    EXPECT_EQ(wren::ShownPath("/a/bc/d.h", "/a/b"), "/a/bc/d.h");
    EXPECT_EQ(wren::ShownPath("/a/b.h", "/"), "/a/b.h");
}
