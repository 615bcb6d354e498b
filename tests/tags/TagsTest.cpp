#include "tags/Tags.h"

#include "tags/PathCache.h"
#include "tests/tags/TagsFolder.h"

#include <thread>

namespace {

// A local and a system tags file. The local sources a.cpp and b.h share a directory; the system's is in another.
class TagsTest : public testing::Test {
protected:
    ~TagsTest() override { JoinThreads(); }

    Tags Make(const std::string& pattern, bool checkDates = false) const
    {
        return Tags(&localEntry, &systemEntry, pattern, checkDates);
    }
    void RemoveLocal() const { std::filesystem::remove(local.Tags()); }
    void RemoveSystem() const { std::filesystem::remove(system.Tags()); }

    TagsFolder local;
    TagsFolder system;
    BEntry localEntry = local.Entry();
    BEntry systemEntry = system.Entry();

    std::string name;
    std::string qualifier;
    char kind = 0;
    EntryRef ref;
    int line = 0;
    bool isSystem = false;
};

template <class Match>
bool Next(Tags& tags, std::string& shown, bool stopAtMismatch, Match match)
{
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
    bool isSystem;
    if (!tags.NextMatch(name, qualifier, kind, ref, line, isSystem, stopAtMismatch, match))
        return false;
    shown = Shown(name, qualifier, kind, ref, line) + (isSystem ? " system" : " local");
    return true;
}

template <class Match = TagFile::ExactMatch>
Lines All(Tags& tags, bool stopAtMismatch = false, Match match = {})
{
    if (!tags.Rewind())
        return {"(nothing to read)"};
    Lines found;
    std::string shown;
    while (Next(tags, shown, stopAtMismatch, match))
        found.push_back(shown);
    return found;
}

Lines AllPaths(Tags& tags)
{
    if (!tags.Rewind())
        return {"(nothing to read)"};
    Lines found;
    std::string path;
    while (tags.NextFileMatch(path))
        found.push_back(path);
    tags.Done();
    return found;
}

} // namespace

TEST_F(TagsTest, ReadsTheLocalFileThenTheSystemFile)
{
    local.WriteTags(TagLine("Bar", "a.cpp", 1, "f") + TagLine("Foo", "a.cpp", 2, "f"));
    system.WriteTags(TagLine("Foo", "b.h", 3, "p", "class:C") + TagLine("Zoo", "b.h", 4, "p"));
    Tags tags = Make("Foo");
    EXPECT_EQ(All(tags), (Lines{"Foo f a.cpp:2 local", "C::Foo p b.h:3 system"}));
    EXPECT_EQ(All(tags).size(), 2u) << "it can be read again";
    EXPECT_EQ(All(tags, false, TagFile::AnyMatch()).size(), 4u);
    Tags partial = Make("C::Fo");
    EXPECT_EQ(All(partial, false, TagFile::PartialMatch()), (Lines{"C::Foo p b.h:3 system"}));
}

TEST_F(TagsTest, GivesATagInBothFilesTwice)
{
    local.WriteTags(TagLine("Foo", "a.cpp", 2, "f"));
    system.WriteTags(TagLine("Foo", "a.cpp", 2, "f"));
    Tags tags = Make("Foo");
    EXPECT_EQ(All(tags), (Lines{"Foo f a.cpp:2 local", "Foo f a.cpp:2 system"}));
}

TEST_F(TagsTest, AMismatchEndsOnlyTheLocalPart)
{
    local.WriteTags(TagLine("Bar", "a.cpp", 1, "f") + TagLine("Foo", "a.cpp", 2, "f"));
    system.WriteTags(TagLine("Foo", "b.h", 3, "p"));
    Tags tags = Make("Foo");
    EXPECT_EQ(All(tags, true), (Lines{"Foo p b.h:3 system"}));
}

TEST_F(TagsTest, StoppingAtAMismatchAfterALocalMatchHidesTheSystemFile)
{
    local.WriteTags(TagLine("Foo", "a.cpp", 2, "f"));
    system.WriteTags(TagLine("Bar", "b.h", 1, "p") + TagLine("Foo", "b.h", 3, "p"));
    Tags tags = Make("Foo");
    ASSERT_TRUE(tags.Rewind());
    std::string shown;
    ASSERT_TRUE(Next(tags, shown, false, TagFile::ExactMatch()));
    EXPECT_EQ(shown, "Foo f a.cpp:2 local");
    EXPECT_FALSE(Next(tags, shown, true, TagFile::ExactMatch())) << "the system's first line has another name";
}

TEST_F(TagsTest, ReadsNamesForCompletions)
{
    local.WriteTags(TagLine("Foo", "gone", 2, "f", "class:A"));
    system.WriteTags(TagLine("Bar", "gone", 3, "p"));
    Tags tags = Make("");
    ASSERT_TRUE(tags.Rewind());
    ASSERT_TRUE(tags.Next(name, qualifier));
    EXPECT_EQ(qualifier + "::" + name, "A::Foo");
    ASSERT_TRUE(tags.Next(name, qualifier));
    EXPECT_EQ(qualifier + "::" + name, "::Bar");
    EXPECT_FALSE(tags.Next(name, qualifier));
}

TEST_F(TagsTest, ReadsEveryTagForAnyPattern)
{
    local.WriteTags(TagLine("Bar", "a.cpp", 1, "f"));
    system.WriteTags(TagLine("Foo", "b.h", 3, "p", "class:C"));
    Tags tags = Make("Else::where");
    ASSERT_TRUE(tags.Rewind());
    ASSERT_TRUE(tags.Next(name, qualifier, kind, ref, line, isSystem));
    EXPECT_EQ(Shown(name, qualifier, kind, ref, line), "Bar f a.cpp:1");
    EXPECT_FALSE(isSystem);
    ASSERT_TRUE(tags.Next(name, qualifier, kind, ref, line, isSystem));
    EXPECT_EQ(Shown(name, qualifier, kind, ref, line), "C::Foo p b.h:3");
    EXPECT_TRUE(isSystem);
    EXPECT_FALSE(tags.Next(name, qualifier, kind, ref, line, isSystem));
}

TEST_F(TagsTest, EitherFileMayBeMissing)
{
    local.WriteTags(TagLine("Foo", "a.cpp", 2, "f"));
    system.WriteTags(TagLine("Foo", "b.h", 3, "p"));
    RemoveLocal();
    Tags onlySystem = Make("Foo");
    EXPECT_EQ(All(onlySystem), Lines{"Foo p b.h:3 system"});

    RemoveSystem();
    Tags neither = Make("Foo");
    EXPECT_FALSE(neither.Rewind());
    EXPECT_FALSE(neither.Next(name, qualifier));
    EXPECT_FALSE(neither.Next(name, qualifier, kind, ref, line, isSystem));

    local.WriteTags(TagLine("Foo", "a.cpp", 2, "f"));
    Tags onlyLocal = Make("Foo");
    EXPECT_EQ(All(onlyLocal), Lines{"Foo f a.cpp:2 local"});
    const BEntry unset;
    Tags withUnset(&localEntry, &unset, "Foo", false);
    EXPECT_EQ(All(withUnset), Lines{"Foo f a.cpp:2 local"});
    Tags withNull(nullptr, &unset, "Foo", false);
    EXPECT_FALSE(withNull.Rewind());
}

TEST_F(TagsTest, EachFileKnowsWhetherItIsStale)
{
    local.WriteTags(TagLine("Foo", "a.cpp", 2, "f"));
    system.WriteTags(TagLine("Foo", "b.h", 3, "p"));
    system.directory.Write("b.h", "");
    Tags tags = Make("Foo", true);
    EXPECT_EQ(All(tags).size(), 2u);
    EXPECT_FALSE(tags.Local().OutOfDate());
    EXPECT_TRUE(tags.System().OutOfDate());
}

TEST_F(TagsTest, AnAbandonedSearchIsClosedByDone)
{
    local.WriteTags(TagLine("Foo", "a.cpp", 1, "f") + TagLine("Foo", "a.cpp", 2, "f"));
    system.WriteTags(TagLine("Foo", "b.h", 3, "p") + TagLine("Foo", "b.h", 4, "p"));
    const long before = OpenDescriptors();
    std::string shown;
    {
        Tags tags = Make("Foo");
        ASSERT_TRUE(tags.Rewind());
        ASSERT_TRUE(Next(tags, shown, false, TagFile::ExactMatch()));
        EXPECT_EQ(OpenDescriptors(), before + 1) << "the system's file is opened when it is its turn";
        tags.Done();
        EXPECT_EQ(OpenDescriptors(), before);

        ASSERT_TRUE(tags.Rewind());
        for (int match = 1; match <= 3; ++match)
            ASSERT_TRUE(Next(tags, shown, false, TagFile::ExactMatch()));
        EXPECT_EQ(shown, "Foo p b.h:3 system");
        EXPECT_EQ(OpenDescriptors(), before + 1);
        tags.Done();
        EXPECT_EQ(OpenDescriptors(), before);

        EXPECT_EQ(All(tags).size(), 4u);
        EXPECT_EQ(OpenDescriptors(), before) << "a search to the end closes both";
    }
    {
        Tags tags = Make("Foo");
        ASSERT_TRUE(tags.Rewind());
    }
    EXPECT_EQ(OpenDescriptors(), before + 1) << "destruction closes nothing";
}

TEST_F(TagsTest, FindsSystemPathsOnceTheyAreLoaded)
{
    local.WriteTags(TagLine("A", "/local/b/x.h", 1, "f") + TagLine("B", "/local/a/x.h", 1, "f"));
    system.WriteTags(TagLine("A", "/system/x.h", 1, "f"));
    const long before = OpenDescriptors();
    Tags tags = Make("x.h");
    EXPECT_EQ(AllPaths(tags), (Lines{"/local/a/x.h", "/local/b/x.h"})) << "the system's are being loaded";
    JoinThreads();
    EXPECT_EQ(AllPaths(tags), (Lines{"/local/a/x.h", "/local/b/x.h", "/system/x.h"}));
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST_F(TagsTest, PathsAreFoundByTheNameInThePattern)
{
    local.WriteTags(TagLine("A", "/local/x.h", 1, "f") + TagLine("A", "/local/vector", 1, "f"));
    RemoveSystem();
    Tags qualified = Make("std::vector");
    ASSERT_TRUE(qualified.Rewind());
    std::string path;
    EXPECT_TRUE(qualified.NextFileMatch(path));
    EXPECT_EQ(path, "/local/vector");
    EXPECT_FALSE(qualified.NextFileMatch(path));
    EXPECT_EQ(path, "/local/vector");
}

TEST_F(TagsTest, AnUnreadableLocalFileHasNoPaths)
{
    local.WriteTags(TagLine("A", "/local/x.h", 1, "f"));
    system.WriteTags(TagLine("A", "/system/x.h", 1, "f"));
    Tags first = Make("x.h");
    AllPaths(first);
    JoinThreads();

    SetTime(local.Tags(), NewTime());
    Tags tags = Make("x.h");
    ASSERT_TRUE(tags.Rewind());
    RemoveLocal();
    std::string path;
    EXPECT_TRUE(tags.NextFileMatch(path));
    EXPECT_EQ(path, "/system/x.h") << "the search goes on with the system's";
    EXPECT_FALSE(tags.NextFileMatch(path));
}

// In a separate process, because it spoils the only cache of local paths.
TEST_F(TagsTest, FindsSystemPathsWhileLocalPathsAreNotLoaded)
{
    local.WriteTags(TagLine("A", "/local/x.h", 1, "f"));
    system.WriteTags(TagLine("A", "/system/x.h", 1, "f"));
    const auto search = [this] {
        const BEntry missing((local.directory / "missing").c_str());
        TagFile reader(&missing, "", false);
        PathCache::LocalTagCache().LoadIfNeeded(reader, true); // a load that never ends
        Tags tags = Make("x.h");
        AllPaths(tags);
        JoinThreads();
        return AllPaths(tags) == Lines{"/system/x.h"} ? 0 : 1;
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(_exit(search()), testing::ExitedWithCode(0), "");
}

TEST_F(TagsTest, NewTagsForgetPathsOfChangedFiles)
{
    RemoveSystem();
    local.WriteTags(TagLine("A", "/old/x.h", 1, "f"));
    Tags old = Make("x.h");
    EXPECT_EQ(AllPaths(old), Lines{"/old/x.h"});
    local.WriteTags(TagLine("A", "/new/x.h", 1, "f"));
    EXPECT_EQ(AllPaths(old), Lines{"/old/x.h"}) << "only made anew they look at times";
    Tags changed = Make("x.h");
    EXPECT_EQ(AllPaths(changed), Lines{"/new/x.h"});
}

TEST_F(TagsTest, AnAbandonedSearchOfSystemPathsIsContinued)
{
    local.WriteTags(TagLine("A", "/local/x.h", 1, "f"));
    system.WriteTags(TagLine("A", "/system/a/x.h", 1, "f") + TagLine("B", "/system/b/x.h", 1, "f"));
    Tags tags = Make("x.h");
    AllPaths(tags);
    JoinThreads();
    std::string path;
    ASSERT_TRUE(tags.Rewind());
    ASSERT_TRUE(tags.NextFileMatch(path));
    ASSERT_TRUE(tags.NextFileMatch(path));
    EXPECT_EQ(path, "/system/a/x.h");
    tags.Done();

    EXPECT_EQ(AllPaths(tags), (Lines{"/local/x.h", "/system/b/x.h"})) << "only the local place is forgotten";
    ASSERT_TRUE(tags.Rewind());
    ASSERT_TRUE(tags.NextFileMatch(path));
    ASSERT_TRUE(tags.NextFileMatch(path));
    tags.Done();
    RemoveLocal();
    EXPECT_EQ(AllPaths(tags), (Lines{"/system/a/x.h", "/system/b/x.h"})) << "unless there is no local file";
}

// The position in the local paths belongs to the cache, and outlives the search that left it there.
TEST_F(TagsTest, EachSearchOfLocalPathsStartsAtTheFirst)
{
    local.WriteTags(TagLine("A", "/local/a/x.h", 1, "f") + TagLine("B", "/local/b/x.h", 1, "f"));
    RemoveSystem();
    std::string path;
    Tags abandoned = Make("x.h");
    ASSERT_TRUE(abandoned.Rewind());
    ASSERT_TRUE(abandoned.NextFileMatch(path));
    EXPECT_EQ(path, "/local/a/x.h");
    abandoned.Done();

    Tags tags = Make("x.h");
    EXPECT_EQ(AllPaths(tags), (Lines{"/local/a/x.h", "/local/b/x.h"}));
}

TEST_F(TagsTest, TwoThreadsMaySearchForPathsAtOnce)
{
    std::string many;
    for (int file = 0; file < 500; ++file)
        many += TagLine("A", "/system/" + std::to_string(file) + "/x.h", 1, "f");
    system.WriteTags(many);
    local.WriteTags(TagLine("A", "/local/x.h", 1, "f"));
    const auto search = [this] {
        for (int round = 0; round < 20; ++round) {
            Tags tags = Make("x.h");
            std::string path;
            if (!tags.Rewind())
                continue;
            for (int found = 0; found < 30 && tags.NextFileMatch(path); ++found)
                EXPECT_TRUE(path.ends_with("/x.h"));
            tags.Done();
        }
    };
    std::thread other(search);
    search();
    other.join();
    JoinThreads();
    Tags tags = Make("x.h");
    Lines all = AllPaths(tags); // from where the last search stopped
    all = AllPaths(tags);
    EXPECT_EQ(all.size(), 501u);
}
