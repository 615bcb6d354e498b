// Files opened by a name from elsewhere, mostly from unchecked tags.
#include "tests/support/Limits.h"
#include "tests/support/TempDirectory.h"
#include "wren/core/Documents.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// The reason that it cannot be read, without its name; "" when it can.
std::string Refusal(const std::string& path)
{
    std::string error;
    if (wren::ReadWholeFile(path, &error))
        return "";
    EXPECT_TRUE(error.starts_with(path + ": ")) << error;
    return error.substr(path.size() + 2);
}

} // namespace

TEST(ReadWholeFile, ReportsNonFilesWithoutWaiting)
{
    const TempDirectory directory;
    ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
    const std::string noText = "a pipe, a device or a socket holds no text";
    const struct {
        std::string path;
        std::string says;
    } kCases[] = {
        {directory / "none", "No such file or directory"},
        {directory.Path(), "Is a directory"},
        {directory / "pipe", noText},
        {"/dev/null", noText},
        {"/dev/zero", noText},
        {"/dev/tty", noText},
        {"/proc/self/mem", "Input/output error"},
        {"/proc/self/pagemap", "File too large"}, // reports size 0, and has hundreds of gigabytes
    };
    for (const auto& each : kCases)
        EXPECT_EQ(Refusal(each.path), each.says) << each.path;
}

TEST(ReadWholeFile, ReadsFilesWithoutAKnownLength)
{
    std::string error;
    const auto text = wren::ReadWholeFile("/proc/self/status", &error);
    ASSERT_TRUE(text) << error;
    EXPECT_TRUE(text->starts_with("Name:"));
}

TEST(ReadWholeFile, RefusesAFileThatIsTooLargeForAView)
{
    const TempDirectory directory;
    const std::string path = directory.Write("large", "");
    fs::resize_file(path, 3'000'000'000); // one hole
    EXPECT_EQ(Refusal(path), "File too large");
}

TEST(ReadWholeFile, ReportsThatThereAreNoDescriptors)
{
    const TempDirectory directory;
    const std::string path = directory.Write("file", "text");
    {
        const NoDescriptors none;
        EXPECT_EQ(Refusal(path), "Too many open files");
    }
    EXPECT_EQ(Refusal(path), "");
}

TEST(ReadWholeFile, ReportsThatThereIsNoMemory)
{
    if (!kMemoryCanBeLimited)
        GTEST_SKIP() << "a sanitizer ends the process then";
    const TempDirectory directory;
    const std::string path = directory.Write("large", "");
    fs::resize_file(path, 1'000'000'000);
    const LittleMemory little(50'000'000);
    EXPECT_EQ(Refusal(path), "Cannot allocate memory");
}
