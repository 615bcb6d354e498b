#include "wren/core/UserDirectories.h"

#include "tests/support/TempDirectory.h"

#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

void Set(const char* variable, const char* value)
{
    if (value == nullptr)
        ::unsetenv(variable);
    else
        ::setenv(variable, value, 1);
}

} // namespace

TEST(UserDirectories, Cases)
{
    const struct {
        const char* why;
        const char* home;
        const char* variable;
        const char* config;
        const char* state;
    } kCases[] = {
        {"from the home", "/home/a", nullptr, "/home/a/.config/wren", "/home/a/.local/state/wren"},
        {"a home with a slash", "/home/a/", nullptr, "/home/a/.config/wren", "/home/a/.local/state/wren"},
        {"from the variable", "/home/a", "/x/y", "/x/y/wren", "/x/y/wren"},
        {"a variable with a slash", "/home/a", "/x/y/", "/x/y/wren", "/x/y/wren"},
        {"an empty variable counts as none", "/home/a", "", "/home/a/.config/wren", "/home/a/.local/state/wren"},
        {"nor does one that is no absolute path", "/a", "x", "/a/.config/wren", "/a/.local/state/wren"},
        {"the variable alone", nullptr, "/x", "/x/wren", "/x/wren"},
        {"neither", nullptr, nullptr, "", ""},
    };
    for (const auto& each : kCases) {
        Set("HOME", each.home);
        Set("XDG_CONFIG_HOME", each.variable);
        Set("XDG_STATE_HOME", each.variable);
        EXPECT_EQ(wren::ConfigDirectory(), each.config) << each.why;
        EXPECT_EQ(wren::StateDirectory(), each.state) << each.why;
    }
    ::unsetenv("XDG_CONFIG_HOME");
    ::unsetenv("XDG_STATE_HOME");
}

TEST(UserDirectories, AreMadeForTheUserAlone)
{
    const TempDirectory directory;
    std::string error;
    ASSERT_TRUE(wren::MakeUserDirectory(directory / "a/b", &error)) << error;
    EXPECT_TRUE(wren::MakeUserDirectory(directory / "a/b", &error)) << "it is there already";
    struct stat status;
    ASSERT_EQ(::stat((directory / "a/b").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700u);
}

TEST(UserDirectories, SayWhatIsInTheirWay)
{
    const TempDirectory directory;
    const std::string file = directory.Write("file", "");
    std::string error;
    EXPECT_FALSE(wren::MakeUserDirectory(file + "/a", &error));
    EXPECT_THAT(error, ::testing::HasSubstr(file));
}
