#include "base/EnvironmentNumber.h"

#include "tests/support/Environment.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* kVariable = "WREN_TEST_NUMBER";

TEST(EnvironmentNumber, Cases)
{
    const struct {
        const char* why;
        const char* value; // null: unset
        unsigned number;   // 0: it fails
    } kCases[] = {
        {"unset", nullptr, 7},          {"empty", "", 7},
        {"the least", "1", 1},          {"the most", "64", 64},
        {"more than that", "65", 0},    {"none", "0", 0},
        {"negative", "-1", 0},          {"a word behind it", "3 jobs", 0},
        {"a blank before it", " 3", 0}, {"beyond any number", "99999999999999999999", 0},
    };
    for (const auto& each : kCases) {
        SetVariable(kVariable, each.value);
        const base::Result<unsigned> number = base::NumberFrom(kVariable, 64, 7);
        EXPECT_EQ(number ? *number : 0, each.number) << each.why;
    }
    SetVariable(kVariable, nullptr);
}

TEST(EnvironmentNumber, TheErrorNamesTheVariableAndItsRange)
{
    SetVariable(kVariable, "many");
    const base::Result<unsigned> number = base::NumberFrom(kVariable, 64, 7);
    ASSERT_FALSE(number);
    EXPECT_EQ(number.Failure().Message(), "WREN_TEST_NUMBER is 'many' but must be a number from 1 to 64");
    SetVariable(kVariable, nullptr);
}

} // namespace
