// Reading tags files when the process has no time left for it.
#include "tags/CompletionCache.h"
#include "tags/PathCache.h"
#include "tags/SortedStrings.h"
#include "tags/Tags.h"
#include "tests/tags/TagsFolder.h"
#include "vetch/support/Cancellation.h"
#include "vetch/support/FThread.h"

#include <cstring>

namespace {

// Cancels reading for its lifetime.
class CancelledReading {
public:
    CancelledReading() { vetch::CancelReading(true); }
    ~CancelledReading() { vetch::CancelReading(false); }
};

constexpr long kLines = 20'000; // many blocks

std::string LongTags(const std::string& name = "name")
{
    std::string tags;
    for (long i = 0; i < kLines; ++i)
        tags += TagLine(name + std::to_string(100'000 + i), "a" + std::to_string(i) + ".cpp", 1, "f");
    return tags;
}

} // namespace

TEST(CancelledReading, EndsAtTheNextBlockForGood)
{
    const TagsFolder folder(LongTags());
    const BEntry entry = folder.Entry();
    TagFile file(&entry, "", false);
    ASSERT_TRUE(file.Rewind());
    std::string name;
    std::string qualifier;
    ASSERT_TRUE(file.Next(name, qualifier));
    long count = 1;
    {
        const CancelledReading cancelled;
        while (file.Next(name, qualifier))
            ++count;
    }
    EXPECT_LT(count, kLines / 10);
    EXPECT_FALSE(file.Next(name, qualifier)) << "the end stays the end";
    file.Done();
    EXPECT_EQ(Names(folder.Entry()).size(), size_t(kLines)) << "later files are read";
}

TEST(CancelledReading, ACancelledLoadOfCompletionsIsRetried)
{
    const TagsFolder local(LongTags());
    const TagsFolder system(LongTags("system"));
    const BEntry localTags = local.Entry();
    const BEntry systemTags = system.Entry();
    Tags tags(&localTags, &systemTags, "", false);
    CompletionCache cache;
    Lines names;
    {
        const CancelledReading cancelled;
        EXPECT_FALSE(cache.LoadIfNeeded(tags, true));
        vetch::JoinThreads();
        cache.GetCompletions("", names, 1);
        EXPECT_EQ(names, Lines{}) << "some would look like all";
    }
    EXPECT_FALSE(cache.LoadIfNeeded(tags, true)) << "another load begins";
    vetch::JoinThreads();
    EXPECT_TRUE(cache.LoadIfNeeded(tags, true));
    cache.GetCompletions("", names, 10 * kLines);
    EXPECT_EQ(names.size(), size_t(2 * kLines));
}

TEST(CancelledReading, ACancelledLoadOfPathsIsRetried)
{
    const TagsFolder folder(LongTags());
    const BEntry entry = folder.Entry();
    TagFile file(&entry, "", false);
    for (const bool inBackground : {false, true}) {
        PathCache cache;
        {
            const CancelledReading cancelled;
            cache.LoadIfNeeded(file, inBackground);
            vetch::JoinThreads();
            EXPECT_EQ(cache.FindNext("a1.cpp"), nullptr);
        }
        EXPECT_EQ(cache.LoadIfNeeded(file, inBackground), !inBackground) << "another load begins";
        vetch::JoinThreads();
        EXPECT_TRUE(cache.LoadIfNeeded(file, inBackground));
        EXPECT_STREQ(cache.FindNext("a1.cpp"), "a1.cpp") << inBackground;
    }
}

TEST(CancelledReading, StopsASortAndLosesNothing)
{
    const auto less = [](const char* a, const char* b) { return std::strcmp(a, b) < 0; };
    char texts[][2] = {"c", "a", "b"};
    std::vector<char*> strings = {texts[0], texts[1], texts[2]};
    const std::vector<char*> before = strings;
    {
        const CancelledReading cancelled;
        EXPECT_FALSE(SortUnlessCancelled(strings, less));
        EXPECT_EQ(strings, before);
    }
    EXPECT_TRUE(SortUnlessCancelled(strings, less));
    EXPECT_EQ(strings, (std::vector<char*>{texts[1], texts[2], texts[0]}));
}
