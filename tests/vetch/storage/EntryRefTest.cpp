#include "vetch/storage/EntryRef.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <vector>

TEST(EntryRef, IsUnsetWithoutAPath)
{
    for (const EntryRef& ref : {EntryRef(), EntryRef(nullptr), EntryRef("")}) {
        EXPECT_EQ(ref.name, nullptr);
        EXPECT_EQ(ref.Path(), "");
        EXPECT_TRUE(ref == EntryRef());
    }
}

TEST(EntryRef, SplitsItsPathAtTheLastSlash)
{
    const struct {
        const char* why;
        const char* path;
        const char* normalised;
        const char* name;
    } kCases[] = {
        {"a file in a directory", "/a/b.h", "/a/b.h", "b.h"},
        {"a file in the root", "/tags", "/tags", "tags"},
        {"the root", "/", "/", "/"},
        {"a directory", "/a/b/", "/a/b", "b"},
        {"not normalised", "/a//./x/../b.h", "/a/b.h", "b.h"},
    };
    for (const auto& c : kCases) {
        const EntryRef ref(c.path);
        EXPECT_EQ(ref.Path(), c.normalised) << c.why;
        EXPECT_STREQ(ref.name, c.name) << c.why;
    }
}

TEST(EntryRef, TakesARelativePathFromTheProcessDirectory)
{
    EXPECT_EQ(EntryRef("a.h").Path(), (std::filesystem::current_path() / "a.h").string());
}

TEST(EntryRef, ComparesDirectoryAndName)
{
    const EntryRef ref("/a/b");
    EXPECT_TRUE(ref == EntryRef("/a/./b"));
    EXPECT_FALSE(ref != EntryRef("/a/./b"));
    EXPECT_TRUE(ref != EntryRef("/a/c")) << "another name";
    EXPECT_TRUE(ref != EntryRef("/b/b")) << "another directory";
    EXPECT_TRUE(ref != EntryRef()) << "unset";
    EXPECT_TRUE(EntryRef("/") != EntryRef()) << "the root is not unset";
}

TEST(EntryRef, CopiesPointIntoTheirOwnText)
{
    auto original = std::make_unique<EntryRef>("/directory/short");
    const EntryRef copy(*original);
    EntryRef assigned("/some/other, with a name that needs memory of its own");
    assigned = *original;
    EXPECT_NE(copy.name, original->name);
    original.reset();
    EXPECT_STREQ(copy.name, "short");
    EXPECT_STREQ(assigned.name, "short");
    EXPECT_EQ(assigned.Path(), "/directory/short");
}

TEST(EntryRef, MayBeAssignedToItself)
{
    EntryRef ref("/a/b");
    ref = *&ref;
    EXPECT_STREQ(ref.name, "b");
    ref = EntryRef();
    EXPECT_EQ(ref.name, nullptr);
}

TEST(EntryRef, SurvivesAGrowingVector)
{
    std::vector<EntryRef> refs;
    for (int i = 0; i < 20; ++i)
        refs.emplace_back(("/a/" + std::to_string(i)).c_str());
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(refs[i].name, std::to_string(i));
}
