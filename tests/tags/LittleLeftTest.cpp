// Tags files when the system has no descriptors or no memory left.

#include "tags/CompletionCache.h"
#include "tags/PathCache.h"
#include "tests/support/Limits.h"
#include "tests/tags/TagsFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

// More different names than fit into the memory below.
constexpr size_t kManyNames = 600'000;

std::string TooManyNames()
{
    std::string tags;
    for (size_t number = 0; number < kManyNames; ++number)
        tags += "name" + std::to_string(number) + "\tdirectory" + std::to_string(number) + "/a.cpp\t1;\"\tf\n";
    return tags;
}

constexpr rlim_t kLittle = 20'000'000;

TEST(ScarceResources, AFileCanBeOpenedOnceDescriptorsAreFree)
{
    const TagsFolder folder(TagLine("Foo", "a.cpp", 1, "f"));
    const BEntry tags = folder.Entry();
    {
        const NoDescriptors none;
        EXPECT_EQ(Matches(tags, "Foo"), Lines{"(cannot be opened)"});
        EXPECT_EQ(Names(tags), Lines{"(cannot be opened)"});
    }
    EXPECT_EQ(Matches(tags, "Foo"), Lines{"Foo f a.cpp:1"});
}

// In a new process, without memory that other tests have freed.
void ExpectInFreshProcess(void (*story)())
{
    if (!kMemoryCanBeLimited)
        GTEST_SKIP() << "a sanitizer ends the process then";
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto run = [&] {
        story();
        std::exit(testing::Test::HasFailure() ? 1 : 0);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(0), "");
}

TEST(ScarceResources, AFileHasNoNamesWithoutMemoryForThem)
{
    ExpectInFreshProcess([] {
        const TagsFolder folder(TooManyNames());
        const BEntry tags = folder.Entry();
        TagFile file(&tags, "", false);
        std::vector<char*> entries;
        const long descriptors = OpenDescriptors();
        {
            const LittleMemory little(kLittle);
            CompletionCache::LoadSelf(file, entries);
        }
        EXPECT_TRUE(entries.empty()) << "half of them would look like all";
        EXPECT_EQ(OpenDescriptors(), descriptors);
        CompletionCache::LoadSelf(file, entries);
        EXPECT_EQ(entries.size(), kManyNames) << "later there was enough";
        CompletionCache::ClearCache(entries);
    });
}

TEST(ScarceResources, AFileHasNoPathsWithoutMemoryForThem)
{
    ExpectInFreshProcess([] {
        const TagsFolder folder(TooManyNames());
        const BEntry tags = folder.Entry();
        TagFile file(&tags, "", false);
        PathCache cache;
        const long descriptors = OpenDescriptors();
        {
            const LittleMemory little(kLittle);
            EXPECT_TRUE(cache.LoadIfNeeded(file, false)) << "there is nothing to wait for";
        }
        EXPECT_EQ(OpenDescriptors(), descriptors);
        EXPECT_EQ(cache.FindNext("a.cpp"), nullptr);
        const BEntry none;
        cache.FlushIfNeeded(&none);
        EXPECT_TRUE(cache.LoadIfNeeded(file, false));
        EXPECT_NE(cache.FindNext("directory599999/a.cpp"), nullptr) << "later there was enough";
    });
}

} // namespace
