#include "base/Hash.h"

#include <gtest/gtest.h>

namespace base {

// The values published by the hash's authors.
TEST(Fnv1a, IsTheOneThatFilesHold)
{
    EXPECT_EQ(Fnv1a(""), 0xcbf29ce484222325u);
    EXPECT_EQ(Fnv1a("a"), 0xaf63dc4c8601ec8cu);
    EXPECT_EQ(Fnv1a("foobar"), 0x85944171f73967e8u);
}

} // namespace base
