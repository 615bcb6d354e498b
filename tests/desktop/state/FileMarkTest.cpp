#include "wren/desktop/state/FileMark.h"

#include "tests/support/TempDirectory.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>

namespace fs = std::filesystem;
using wren::FileMark;

namespace {

void TouchLater(const std::string& file)
{
    fs::last_write_time(file, fs::file_time_type::clock::now() + std::chrono::hours(1));
}

} // namespace

TEST(FileMark, DetectsDifferentContent)
{
    struct Case {
        const char* what;
        std::function<void(const TempDirectory&)> happens;
        bool changed;
    };
    const Case kCases[] = {
        {"nothing", [](const TempDirectory&) {}, false},
        {"touched", [](const TempDirectory& in) { TouchLater(in / "a"); }, false},
        {"replaced by the same", [](const TempDirectory& in) { fs::rename(in.Write("b", "text"), in / "a"); }, false},
        {"another text of the same size", [](const TempDirectory& in) { in.Write("a", "TEXT"); }, true},
        {"longer", [](const TempDirectory& in) { in.Write("a", "text more"); }, true},
        {"gone", [](const TempDirectory& in) { fs::remove(in / "a"); }, true},
        {"a directory",
         [](const TempDirectory& in) {
             fs::remove(in / "a");
             fs::create_directory(in / "a");
         },
         true},
        {"large now", [](const TempDirectory& in) { fs::resize_file(in / "a", FileMark::kLargestCompared + 1); }, true},
    };
    for (const Case& c : kCases) {
        const TempDirectory directory;
        const std::string file = directory.Write("a", "text");
        const FileMark mark = wren::MarkOf(base::FileIdentity::At(file), "text");
        c.happens(directory);
        EXPECT_EQ(wren::HasChanged(file, mark), c.changed) << c.what;
    }
}

TEST(FileMark, TrustsTheTextThatWasReadRatherThanTheStamp)
{
    const TempDirectory directory;
    const std::string file = directory.Write("a", "written while it was read");
    EXPECT_TRUE(wren::HasChanged(file, wren::MarkOf(base::FileIdentity::At(file), "text")));
}

TEST(FileMark, ALargeFileIsComparedByItsStamp)
{
    const TempDirectory directory;
    const std::string file = directory.Write("a", std::string(FileMark::kLargestCompared + 1, 'x'));
    const FileMark mark = wren::MarkOf(base::FileIdentity::At(file), std::string(FileMark::kLargestCompared + 1, 'x'));
    EXPECT_EQ(mark.content, "");
    EXPECT_FALSE(wren::HasChanged(file, mark));
    TouchLater(file);
    EXPECT_TRUE(wren::HasChanged(file, mark));
}

TEST(FileMark, AMissingFileChangesWhenItAppears)
{
    const TempDirectory directory;
    EXPECT_FALSE(wren::HasChanged(directory / "a", FileMark()));
    directory.Write("a", "");
    EXPECT_TRUE(wren::HasChanged(directory / "a", FileMark()));
}
