#include "wren/symbols/PlainValue.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>

TEST(PlainValue, Cases)
{
    const struct {
        const char* expression;
        std::optional<long long> value;
    } cases[] = {
        {"1", 1},
        {"0x1Fu", 31},
        {"010", 8},
        {"0b101", 5},
        {"1'000", 1000},
        {"-1", -1},
        {"~0", -1},
        {"1 + 2 * 3", 7},
        {"(1 + 2) * 3", 9},
        {"1 << 4 | 3", 19},
        {"7 - 2 - 1", 4},
        {"7 / 0", std::nullopt},
        {"1.5", std::nullopt},
        {"n + 1", std::nullopt},
        {"1 +", std::nullopt},
        {"(1", std::nullopt},
        {"", std::nullopt},
        {"1 << 63", std::nullopt},
        {"1 < 2", std::nullopt},
        {"9223372036854775807 + 1", std::nullopt},
    };
    for (const auto& c : cases)
        EXPECT_EQ(wren::PlainValue(c.expression), c.value) << c.expression;
    EXPECT_EQ(wren::PlainValue(std::string(100'000, '(')), std::nullopt);
    EXPECT_EQ(wren::PlainValue(std::string(199, '-') + "1"), std::nullopt);
}
