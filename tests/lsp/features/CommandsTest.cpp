// What the commands do to a tree.
#include "tests/lsp/features/FeatureFixture.h"

#include <filesystem>

namespace {

using lsp_test::FeatureFixture;
using lsp_test::Json;

// Several programs may write the tags of one directory: the file of the lock tells them.
TEST(TagsCommand, TakesTheLockOfTheDirectory)
{
    const FeatureFixture fixture("== a.c\nint n;\n== .tags.lock\n"); // as a killed run leaves it
    const Json written = fixture.Handle("workspace/executeCommand", {{"command", "wren.tags"}});
    EXPECT_EQ(written, fixture.tree / "tags");
    EXPECT_TRUE(std::filesystem::exists(fixture.tree / "tags"));
    EXPECT_FALSE(std::filesystem::exists(fixture.tree / ".tags.lock")) << "the lock's owner removes it";
}

} // namespace
