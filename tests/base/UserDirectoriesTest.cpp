#include "base/UserDirectories.h"

#include "tests/support/Environment.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace base {
namespace {

// Sets an environment variable, and restores it at the end.
class Variable {
public:
    explicit Variable(const char* name) : name(name)
    {
        if (const char* value = std::getenv(name))
            before = value;
    }
    ~Variable() { SetVariable(name, before ? before->c_str() : nullptr); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* const name;
    std::optional<std::string> before;
};

TEST(UserDirectories, FollowTheirVariablesAndTheHome)
{
    const Variable home("HOME"), config("XDG_CONFIG_HOME"), state("XDG_STATE_HOME"), cache("XDG_CACHE_HOME");
    const struct {
        const char* why;
        const char* home;
        const char* variable;
        const char* config;
        const char* state;
        const char* cache;
    } kCases[] = {
        {"from the home", "/home/a", nullptr, "/home/a/.config/p", "/home/a/.local/state/p", "/home/a/.cache/p"},
        {"a home with slashes", "/home/a//", nullptr, "/home/a/.config/p", "/home/a/.local/state/p",
         "/home/a/.cache/p"},
        {"from the variable", "/home/a", "/x/y", "/x/y/p", "/x/y/p", "/x/y/p"},
        {"a variable with a slash", "/home/a", "/x/y/", "/x/y/p", "/x/y/p", "/x/y/p"},
        {"an empty variable counts as none", "/a", "", "/a/.config/p", "/a/.local/state/p", "/a/.cache/p"},
        {"nor does a relative path count", "/a", "x", "/a/.config/p", "/a/.local/state/p", "/a/.cache/p"},
        {"the variable alone", nullptr, "/x", "/x/p", "/x/p", "/x/p"},
        {"neither", nullptr, nullptr, "", "", ""},
    };
    for (const auto& each : kCases) {
        SetVariable("HOME", each.home);
        for (const char* variable : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
            SetVariable(variable, each.variable);
        EXPECT_EQ(ConfigDirectory("p"), each.config) << each.why;
        EXPECT_EQ(StateDirectory("p"), each.state) << each.why;
        EXPECT_EQ(CacheDirectory("p"), each.cache) << each.why;
    }
}

TEST(Home, EndsWithOneSlash)
{
    const Variable home("HOME");
    const struct {
        const char* variable;
        const char* home;
    } kCases[] = {{"/home/a", "/home/a/"}, {"/home/a//", "/home/a/"}, {"/", "/"}, {"", ""}, {nullptr, ""}};
    for (const auto& each : kCases) {
        SetVariable("HOME", each.variable);
        EXPECT_EQ(Home(), each.home);
    }
}

} // namespace
} // namespace base
