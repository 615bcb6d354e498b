#include "wren/core/TagsTarget.h"

#include "tests/support/TempDirectory.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace wren {
namespace {

namespace fs = std::filesystem;

constexpr const char* kTagsLine = "old\told.h\t1;\"\tv\n";

TEST(TagsTarget, LeavesThePermissionsOfALinksTargetAlone)
{
    const TempDirectory tree;
    fs::permissions(tree.Write("project/tags", kTagsLine), fs::perms::all);
    fs::permissions(tree.Write("secret", "mine\n"), fs::perms::owner_read);
    fs::create_symlink(tree / "secret", tree / "project/tags.tmp"); // made after the tags program ended
    EXPECT_FALSE(TagsTarget(tree / "project/tags", tree / "project/tags.tmp").Move());
    EXPECT_EQ(fs::status(tree / "secret").permissions(), fs::perms::owner_read);
    EXPECT_FALSE(fs::is_symlink(tree / "project/tags"));
}

TEST(TagsTarget, SuggestsARemedyOnlyForALinkToTags)
{
    const TempDirectory tree;
    tree.Write("project/.keep", "");
    tree.Write("home/.aliases", "");
    fs::create_directory(tree / "other");
    const struct {
        const char* target;
        const char* inOther; // the target of the link other/tags, or "" for none
        bool isNamed;
        const char* why;
    } kCases[] = {
        {"../other/tags", "", true, "the tags of another project, made or not"},
        {"tags", "", false, "a loop leads nowhere, and the current directory is not meant"},
        {"../other/tags", "../home/.aliases", false, "the link leads on to a file that is not a tags file"},
        {"../home/.aliases", "", false, "another file"},
    };
    for (const auto& each : kCases) {
        fs::remove(tree / "project/tags");
        fs::remove(tree / "other/tags");
        fs::create_symlink(each.target, tree / "project/tags");
        if (*each.inOther != '\0')
            fs::create_symlink(each.inOther, tree / "other/tags");
        const auto obstacle = TagsTarget(tree / "project/tags", tree / "project/tags.tmp").Obstacle();
        ASSERT_TRUE(obstacle) << each.why;
        EXPECT_EQ(obstacle->find("wren tags " + (tree / "other") + "\n") != std::string::npos, each.isNamed)
            << each.why << ": " << *obstacle;
        EXPECT_EQ(obstacle->find("wren tags") != std::string::npos, each.isNamed) << each.why << ": " << *obstacle;
    }
}

} // namespace
} // namespace wren
