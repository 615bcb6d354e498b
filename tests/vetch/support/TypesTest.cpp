#include "vetch/support/Types.h"

#include <gtest/gtest.h>

namespace {

TEST(FourCC, PutsTheFirstCharacterIntoTheHighestByte)
{
    EXPECT_EQ(FourCC("Look"), 0x4C6F6F6Bu);
    EXPECT_EQ(FourCC("_QRQ"), 0x5F515251u);
    EXPECT_EQ(FourCC("\xff\x80\x00\x01"), 0xFF800001u) << "characters are bytes, whatever their sign";
    static_assert(FourCC("abcd") != FourCC("dcba"));
}

} // namespace
