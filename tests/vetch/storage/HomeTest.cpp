#include "vetch/storage/Home.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace {

class HomeTest : public testing::Test {
protected:
    HomeTest()
    {
        if (const char* home = std::getenv("HOME"))
            before = home;
    }
    ~HomeTest() override
    {
        if (before)
            setenv("HOME", before->c_str(), 1);
        else
            unsetenv("HOME");
    }

    std::optional<std::string> before;
};

} // namespace

TEST_F(HomeTest, EndsWithOneSlash)
{
    const struct {
        const char* why;
        const char* variable;
        const char* home;
    } kCases[] = {
        {"as it usually is", "/home/u", "/home/u/"},
        {"with its slash", "/home/u/", "/home/u/"},
        {"with more of them", "/home/u//", "/home/u/"},
        {"the root", "/", "/"},
        {"empty", "", ""},
    };
    for (const auto& c : kCases) {
        setenv("HOME", c.variable, 1);
        EXPECT_EQ(Home(), c.home) << c.why;
    }
}

TEST_F(HomeTest, IsEmptyWithoutAHome)
{
    unsetenv("HOME");
    EXPECT_EQ(Home(), "");
}
