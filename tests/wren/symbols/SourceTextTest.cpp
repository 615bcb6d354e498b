#include "wren/symbols/SourceText.h"

#include <gtest/gtest.h>

TEST(SourceText, LinesEndWithAFeedWithOrWithoutAReturnBeforeIt)
{
    const wren::KeptSource kept("a\r\nb\rc\n\nlast");
    const wren::SourceText text = kept.Source();
    EXPECT_EQ(text.Line(1), "a");
    EXPECT_EQ(text.Line(2), "b\rc");
    EXPECT_EQ(text.Line(3), "");
    EXPECT_EQ(text.Line(4), "last");
    EXPECT_EQ(text.Line(0), "");
    EXPECT_EQ(text.Line(5), "");
    EXPECT_EQ(text.LineStart(4), 8u);
    EXPECT_EQ(text.LineStart(5), text.Content().size());
    EXPECT_EQ(text.LineAt(0), 1u);
    EXPECT_EQ(text.LineAt(3), 2u);
    EXPECT_EQ(text.LineAt(100), 4u);
}
