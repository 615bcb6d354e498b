#include "tags/PathCache.h"

#include "tests/support/RefusedThreads.h"
#include "tests/tags/TagsFolder.h"

namespace {

// One tag for each file, in this order.
std::string TagsOf(const Lines& files)
{
    std::string tags;
    for (const std::string& file : files)
        tags += TagLine("name", file, 1, "p");
    return tags;
}

TagFile Reader(const BEntry& tags)
{
    return TagFile(&tags, "", false);
}

bool LoadNow(PathCache& cache, const BEntry& tags)
{
    TagFile file = Reader(tags);
    return cache.LoadIfNeeded(file, false);
}

bool LoadInBackground(PathCache& cache, const BEntry& tags)
{
    TagFile file = Reader(tags);
    return cache.LoadIfNeeded(file, true);
}

// All paths that match a pattern, up to the terminating null.
Lines Found(PathCache& cache, const char* pattern)
{
    Lines found;
    while (const char* path = cache.FindNext(pattern))
        found.push_back(path);
    return found;
}

} // namespace

TEST(PathCache, FindsEachMatchingPathOnceAndThenStartsOver)
{
    const TagsFolder folder(TagsOf({"/z/string.h", "/a/string.h", "/a/xstring.h", "/a/string.h", "/m/other.h"}));
    PathCache cache;
    ASSERT_TRUE(LoadNow(cache, folder.Entry()));
    for (int round = 0; round < 2; ++round) {
        EXPECT_STREQ(cache.FindNext("string.h"), "/a/string.h");
        EXPECT_STREQ(cache.FindNext("string.h"), "/z/string.h");
        EXPECT_EQ(cache.FindNext("string.h"), nullptr);
    }
}

TEST(PathCache, FindsNothingWhenEmpty)
{
    PathCache cache;
    EXPECT_EQ(cache.FindNext("string.h"), nullptr);
    const TagsFolder folder(TagsOf({"/a/string.h"}));
    ASSERT_TRUE(LoadNow(cache, folder.Entry()));
    EXPECT_STREQ(cache.FindNext("string.h"), "/a/string.h") << "the search in vain left no position";
}

TEST(PathCache, KeepsItsPlaceBetweenSearches)
{
    const TagsFolder folder(TagsOf({"/a/one.h", "/b/two.h", "/c/one.h"}));
    PathCache cache;
    ASSERT_TRUE(LoadNow(cache, folder.Entry()));
    EXPECT_STREQ(cache.FindNext("two.h"), "/b/two.h");
    EXPECT_EQ(Found(cache, "one.h"), Lines{"/c/one.h"}) << "another pattern goes on from there";
    EXPECT_STREQ(cache.FindNext("two.h"), "/b/two.h");
    cache.Rewind();
    EXPECT_EQ(Found(cache, "one.h"), (Lines{"/a/one.h", "/c/one.h"}));
}

TEST(PathCache, KeepsItsPlaceWhenTheFileChanges)
{
    const TagsFolder folder(TagsOf({"/a/x.h", "/c/x.h"}));
    const BEntry tags = folder.Entry();
    PathCache cache;
    ASSERT_TRUE(LoadNow(cache, tags));
    EXPECT_STREQ(cache.FindNext("x.h"), "/a/x.h");

    folder.WriteTags(TagsOf({"/a/x.h", "/b/x.h", "/c/x.h"}));
    cache.FlushIfNeeded(&tags);
    ASSERT_TRUE(LoadNow(cache, tags));
    EXPECT_EQ(Found(cache, "x.h"), (Lines{"/b/x.h", "/c/x.h"}));
}

TEST(PathCache, FindsPathsWithTheirEscapes)
{
    const TagsFolder folder(TagsOf({"/a/with\\ blank.h", "/b/with blank.h"}));
    PathCache cache;
    ASSERT_TRUE(LoadNow(cache, folder.Entry()));
    EXPECT_EQ(Found(cache, "with blank.h"), Lines{"/b/with blank.h"});
    EXPECT_EQ(Found(cache, "with\\ blank.h"), Lines{"/a/with\\ blank.h"});
}

TEST(PathCache, ForgetsPathsWhenTheFileChanges)
{
    const TagsFolder folder(TagsOf({"/old/x.h"}));
    const BEntry tags = folder.Entry();
    PathCache cache;
    ASSERT_TRUE(LoadNow(cache, tags));
    cache.FlushIfNeeded(&tags);
    EXPECT_EQ(Found(cache, "x.h"), Lines{"/old/x.h"}) << "it has not changed";

    folder.WriteTags(TagsOf({"/new/x.h"}));
    ASSERT_TRUE(LoadNow(cache, tags));
    EXPECT_EQ(Found(cache, "x.h"), Lines{"/old/x.h"}) << "nobody has looked at its time";
    cache.FlushIfNeeded(&tags);
    EXPECT_EQ(Found(cache, "x.h"), Lines{});
    ASSERT_TRUE(LoadNow(cache, tags));
    EXPECT_EQ(Found(cache, "x.h"), Lines{"/new/x.h"});
}

TEST(PathCache, AnOlderFileCountsAsChanged)
{
    const TagsFolder folder(TagsOf({"/old/x.h"}));
    const BEntry tags = folder.Entry();
    PathCache cache;
    ASSERT_TRUE(LoadNow(cache, tags));
    SetTime(folder.Tags(), cache.FileTime() - 1000);
    cache.FlushIfNeeded(&tags);
    EXPECT_EQ(Found(cache, "x.h"), Lines{});
}

TEST(PathCache, AnotherFileOfTheSameTimeKeepsThePaths)
{
    const TagsFolder folder(TagsOf({"/one/x.h"}));
    const TagsFolder other(TagsOf({"/other/x.h"}));
    PathCache cache;
    ASSERT_TRUE(LoadNow(cache, folder.Entry()));
    SetTime(other.Tags(), cache.FileTime());
    const BEntry tags = other.Entry();
    cache.FlushIfNeeded(&tags);
    ASSERT_TRUE(LoadNow(cache, tags));
    EXPECT_EQ(Found(cache, "x.h"), Lines{"/one/x.h"});
}

TEST(PathCache, TheTimeSurvivesAFlush)
{
    const TagsFolder folder(TagsOf({"/a/x.h"}));
    const BEntry tags = folder.Entry();
    PathCache cache;
    EXPECT_EQ(cache.FileTime(), 0);
    ASSERT_TRUE(LoadNow(cache, tags));
    const time_t loaded = Reader(tags).TagTime();
    EXPECT_EQ(cache.FileTime(), loaded);
    SetTime(folder.Tags(), NewTime());
    cache.FlushIfNeeded(&tags);
    EXPECT_EQ(Found(cache, "x.h"), Lines{});
    EXPECT_EQ(cache.FileTime(), loaded);
}

TEST(PathCache, AMissingFileHasTheTimeOfAnEmptyCache)
{
    const TempDirectory directory;
    const BEntry missing((directory / "tags").c_str());
    PathCache cache;
    cache.FlushIfNeeded(&missing);
    cache.FlushIfNeeded(nullptr);

    const TagsFolder folder(TagsOf({"/a/x.h"}));
    ASSERT_TRUE(LoadNow(cache, folder.Entry()));
    cache.FlushIfNeeded(&missing);
    EXPECT_EQ(Found(cache, "x.h"), Lines{}) << "a filled one is emptied";
}

TEST(PathCache, AnUnreadableFileIsLoadedAsEmptyAndRetried)
{
    const TagsFolder folder;
    const BEntry tags = folder.Entry();
    std::filesystem::remove(folder.Tags());
    PathCache cache;
    EXPECT_TRUE(LoadNow(cache, tags)) << "there is nothing to wait for";
    EXPECT_EQ(Found(cache, "x.h"), Lines{});
    folder.WriteTags(TagsOf({"/a/x.h"}));
    EXPECT_TRUE(LoadNow(cache, tags));
    EXPECT_EQ(Found(cache, "x.h"), Lines{"/a/x.h"});
}

TEST(PathCache, LoadsInTheBackground)
{
    const TagsFolder folder(TagsOf({"/b/x.h", "/a/x.h"}));
    PathCache cache;
    EXPECT_FALSE(LoadInBackground(cache, folder.Entry()));
    JoinThreads();
    EXPECT_TRUE(LoadInBackground(cache, folder.Entry()));
    EXPECT_EQ(Found(cache, "x.h"), (Lines{"/a/x.h", "/b/x.h"}));
    EXPECT_EQ(cache.FileTime(), Reader(folder.Entry()).TagTime());
}

TEST(PathCache, LoadsOneFileAtATime)
{
    const HeldTagsFile held;
    const TagsFolder other(TagsOf({"/other/x.h"}));
    PathCache cache;
    EXPECT_FALSE(LoadInBackground(cache, held.Entry()));
    EXPECT_FALSE(LoadInBackground(cache, other.Entry()));
    EXPECT_FALSE(LoadNow(cache, other.Entry())) << "nor does it load at once what is being loaded";
    held.Open() << TagsOf({"/held/x.h"});
    JoinThreads();
    EXPECT_TRUE(LoadInBackground(cache, other.Entry()));
    EXPECT_EQ(Found(cache, "x.h"), Lines{"/held/x.h"});
}

TEST(PathCache, ALoadWithoutAThreadIsRetriedByTheNextSearch)
{
    const TagsFolder folder(TagsOf({"/a/x.h"}));
    PathCache cache;
    Complaints complaints;
    {
        const RefusedThreads refused;
        EXPECT_FALSE(LoadInBackground(cache, folder.Entry()));
        EXPECT_FALSE(LoadInBackground(cache, folder.Entry()));
        EXPECT_EQ(complaints.Take().size(), 1u);
    }
    EXPECT_FALSE(LoadInBackground(cache, folder.Entry()));
    JoinThreads();
    EXPECT_TRUE(LoadInBackground(cache, folder.Entry()));
    EXPECT_EQ(Found(cache, "x.h"), Lines{"/a/x.h"});
}

TEST(PathCache, TheCallerMayLoadAfterALoadWithoutAThread)
{
    const TagsFolder folder(TagsOf({"/a/x.h"}));
    PathCache cache;
    const Complaints complaints;
    const RefusedThreads refused;
    EXPECT_FALSE(LoadInBackground(cache, folder.Entry()));
    EXPECT_TRUE(LoadNow(cache, folder.Entry()));
    EXPECT_EQ(Found(cache, "x.h"), Lines{"/a/x.h"});
}

TEST(PathCache, AFlushDuringALoadChangesNothing)
{
    const HeldTagsFile held;
    const TagsFolder other(TagsOf({"/other/x.h"}));
    const BEntry otherTags = other.Entry();
    PathCache cache;
    EXPECT_FALSE(LoadInBackground(cache, held.Entry()));

    // More than fits into the pipe: once it is written, part of it is in the cache.
    constexpr size_t kFiles = 10'000;
    std::ofstream writer = held.Open();
    for (size_t file = 0; file < kFiles; ++file)
        writer << TagLine("name", "/held/" + std::to_string(file) + "/x.h", 1, "p");
    writer.flush();
    cache.FlushIfNeeded(&otherTags);
    EXPECT_FALSE(LoadInBackground(cache, otherTags)) << "still the first load";
    writer.close();
    JoinThreads();
    EXPECT_TRUE(LoadInBackground(cache, otherTags));
    EXPECT_EQ(Found(cache, "x.h").size(), kFiles);
}

TEST(PathCache, ABackgroundLoadThatCannotOpenItsFileNeverEnds)
{
    const TagsFolder folder;
    const BEntry tags = folder.Entry();
    std::filesystem::remove(folder.Tags());
    PathCache cache;
    EXPECT_FALSE(LoadInBackground(cache, tags));
    JoinThreads();

    folder.WriteTags(TagsOf({"/a/x.h"}));
    EXPECT_FALSE(LoadInBackground(cache, tags));
    cache.FlushIfNeeded(&tags);
    EXPECT_FALSE(LoadInBackground(cache, tags)) << "a flush does not help";
    EXPECT_FALSE(LoadNow(cache, tags));
    JoinThreads();
    EXPECT_EQ(Found(cache, "x.h"), Lines{});
}

TEST(PathCache, LeavesNoFileOpen)
{
    const TagsFolder folder(TagsOf({"/a/x.h"}));
    const BEntry tags = folder.Entry();
    const long before = OpenDescriptors();
    PathCache now;
    TagFile open = Reader(tags);
    ASSERT_TRUE(open.Rewind());
    EXPECT_TRUE(now.LoadIfNeeded(open, false)) << "a reader that is open is closed first";
    PathCache later;
    EXPECT_FALSE(LoadInBackground(later, tags));
    JoinThreads();
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST(PathCache, EachFileHasACacheAndBothShareALock)
{
    EXPECT_EQ(&PathCache::LocalTagCache(), &PathCache::LocalTagCache());
    EXPECT_EQ(&PathCache::SystemTagCache(), &PathCache::SystemTagCache());
    EXPECT_NE(&PathCache::LocalTagCache(), &PathCache::SystemTagCache());
    EXPECT_EQ(&PathCache::PathCacheLock(), &PathCache::PathCacheLock());
}
