#include "wren/core/PluginBundle.h"

#include "tests/support/TempDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::HasSubstr;
using wren::PluginBundle;

namespace {

const std::string kBundles = TEST_BUNDLES;

std::string WhyNot(const std::string& directory)
{
    std::string error;
    EXPECT_EQ(PluginBundle::Load(directory, &error), nullptr);
    return error;
}

} // namespace

TEST(PluginBundle, FindsTheEntryPointsAndTheIdentifier)
{
    std::string error;
    const auto bundle = PluginBundle::Load(kBundles + "/Recording.bundle", &error);
    ASSERT_NE(bundle, nullptr) << error;
    EXPECT_EQ(bundle->Identifier(), "test.recording");
    EXPECT_EQ(bundle->Help(), "Records what it is told.");
    EXPECT_EQ(bundle->Directory()->path, kBundles + "/Recording.bundle");
    EXPECT_EQ(bundle->Main(12345, nullptr), 0);
}

TEST(PluginBundle, NamesTheMissingPart)
{
    const TempDirectory directory;
    const std::string file = directory.Write("file", "");
    const std::string library = directory.Write("Text.bundle/Contents/Linux/Declaration", "no library");
    directory.Write("Empty.bundle/Contents/Linux/Other", "");
    const struct {
        const char* why;
        std::string bundle;
        std::string says;
    } kCases[] = {
        {"nothing there", directory / "None.bundle", "no bundle directory " + (directory / "None.bundle")},
        {"an empty name", "", "no bundle directory"},
        {"a file", file, "no bundle directory " + file},
        {"no library", directory / "Empty.bundle", "has no library"},
        {"not a library", directory / "Text.bundle", library + " is not a library that can be loaded"},
        {"the first symbol", kBundles + "/WithoutMain.bundle", "lacks the symbol PluginMain"},
        {"the second symbol", kBundles + "/WithoutHelp.bundle", "lacks the symbol PluginHelp"},
    };
    for (const auto& each : kCases)
        EXPECT_THAT(WhyNot(each.bundle), HasSubstr(each.says)) << each.why;
}
