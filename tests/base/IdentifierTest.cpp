#include "base/Identifier.h"

#include <gtest/gtest.h>

namespace base {
namespace {

TEST(Identifier, Cases)
{
    const struct {
        const char* why;
        std::string_view text;
        bool isIdentifier;
    } kCases[] = {
        {"a name", "name", true},
        {"capitals, digits and lines", "Name_2", true},
        {"a line alone", "_", true},
        {"a digit in front", "2nd", false},
        {"nothing", "", false},
        {"a scope", "a::b", false},
        {"arguments", "vector<int>", false},
        {"a blank", "a b", false},
        {"letters beyond ASCII", "caf\xc3\xa9", false},
        {"a dollar", "a$", false},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(IsIdentifier(each.text), each.isIdentifier) << each.why;
}

TEST(Identifier, MayHaveADigitWhereItDoesNotStart)
{
    EXPECT_TRUE(IsIdentifierCharacter('7'));
    EXPECT_FALSE(IsIdentifierStart('7'));
    EXPECT_FALSE(IsIdentifierCharacter('@'));
    EXPECT_FALSE(IsIdentifierCharacter('['));
    EXPECT_FALSE(IsIdentifierCharacter('`'));
    EXPECT_FALSE(IsIdentifierCharacter('{'));
    EXPECT_FALSE(IsIdentifierCharacter('\xe9'));
}

} // namespace
} // namespace base
