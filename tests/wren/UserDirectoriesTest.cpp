#include "wren/core/UserDirectories.h"

#include "tests/support/Environment.h"
#include "tests/support/OrdinaryRights.h"
#include "tests/support/TempDirectory.h"

#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// File systems that are writable, full in either way, or read-only.
int Spacious(const char*, struct statvfs* state)
{
    *state = {};
    state->f_bavail = state->f_files = state->f_favail = 1;
    return 0;
}

int WithoutBlocks(const char*, struct statvfs* state)
{
    Spacious("", state);
    state->f_bavail = 0;
    return 0;
}

int WithoutInodes(const char*, struct statvfs* state)
{
    Spacious("", state);
    state->f_favail = 0;
    return 0;
}

int ReadOnly(const char*, struct statvfs* state)
{
    Spacious("", state);
    state->f_flag = ST_RDONLY;
    return 0;
}

} // namespace

TEST(UserDirectories, AdviceNamesTheProblemOfTheDirectoryOrItsNearestParent)
{
    const TempDirectory home;
    std::filesystem::create_directories(home / "good/deep");
    home.Write("file", "in the way");
    std::filesystem::create_symlink("nowhere", home / "link");
    const struct {
        const char* why;
        std::string directory;
        int (*diskState)(const char*, struct statvfs*);
        std::string beginning;
    } kCases[] = {
        {"nothing is wrong", home / "good/deep", &Spacious, ""},
        {"nothing but that it is not there yet", home / "good/more/and/more", &Spacious, ""},
        {"a file in its place", home / "file", &Spacious,
         (home / "file") + " is not a directory: move it away, or set"},
        {"a file above it", home / "file/a/b", &Spacious, (home / "file") + " is not a directory"},
        {"a link to nowhere", home / "link/a", &Spacious, (home / "link") + " is not a directory"},
        {"a full disk", home / "good/x", &WithoutBlocks, "The disk of " + (home / "good") + " is full: make room"},
        {"no room for more files", home / "good", &WithoutInodes, "The disk of " + (home / "good") + " is full"},
        {"read-only", home / "good", &ReadOnly, (home / "good") + " is on a file system that is mounted read-only"},
    };
    for (const auto& each : kCases) {
        const std::string advice = wren::AdviceAbout(each.directory, each.diskState);
        EXPECT_THAT(advice, ::testing::StartsWith(each.beginning)) << each.why;
        EXPECT_EQ(advice.empty(), each.beginning.empty()) << each.why;
    }
}

TEST(UserDirectories, AdviceNamesAReadOnlyDirectory)
{
    const TempDirectory home;
    std::filesystem::create_directories(home / "closed");
    ASSERT_EQ(::chmod((home / "closed").c_str(), 0555), 0);
    const OrdinaryRights rights;
    EXPECT_THAT(wren::AdviceAbout(home / "closed/wren/recovery", &Spacious),
                ::testing::StartsWith("You have no right to write to " + (home / "closed") + ": give yourself"));
}

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
        {"a relative path does not count", "/a", "x", "/a/.config/wren", "/a/.local/state/wren"},
        {"the variable alone", nullptr, "/x", "/x/wren", "/x/wren"},
        {"neither", nullptr, nullptr, "", ""},
    };
    for (const auto& each : kCases) {
        SetVariable("HOME", each.home);
        SetVariable("XDG_CONFIG_HOME", each.variable);
        SetVariable("XDG_STATE_HOME", each.variable);
        EXPECT_EQ(wren::ConfigDirectory(), each.config) << each.why;
        EXPECT_EQ(wren::StateDirectory(), each.state) << each.why;
    }
    ::unsetenv("XDG_CONFIG_HOME");
    ::unsetenv("XDG_STATE_HOME");
}

TEST(UserDirectories, AreCreatedForTheUserOnly)
{
    const TempDirectory directory;
    std::string error;
    ASSERT_TRUE(wren::MakeUserDirectory(directory / "a/b", &error)) << error;
    EXPECT_TRUE(wren::MakeUserDirectory(directory / "a/b", &error)) << "it is there already";
    struct stat status;
    ASSERT_EQ(::stat((directory / "a/b").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700u);
}

TEST(UserDirectories, ReportAFileInTheWay)
{
    const TempDirectory directory;
    const std::string file = directory.Write("file", "");
    std::string error;
    EXPECT_FALSE(wren::MakeUserDirectory(file + "/a", &error));
    EXPECT_THAT(error, ::testing::HasSubstr(file));
}
