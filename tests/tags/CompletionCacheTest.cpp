#include "tags/CompletionCache.h"

#include "tags/NameAndQualifier.h"
#include "tags/SortedStrings.h"
#include "tags/Tags.h"
#include "tests/support/RefusedThreads.h"
#include "tests/tags/TagsFolder.h"

#include <algorithm>
#include <random>
#include <set>

namespace {

constexpr unsigned long kMany = 1000000;

std::string TagsOf(const Lines& fullNames)
{
    std::string tags;
    for (const std::string& full : fullNames) {
        std::string name;
        std::string qualifier;
        NameAndQualifier::Split(full, name, qualifier);
        tags += TagLine(name, "a.cpp", 1, "f", qualifier.empty() ? "" : "class:" + qualifier);
    }
    return tags;
}

Tags Make(const BEntry& local, const BEntry& system)
{
    return Tags(&local, &system, "", false);
}

// Loads names as completion does at a key stroke.
bool Load(CompletionCache& cache, const BEntry& local, const BEntry& system)
{
    Tags tags = Make(local, system);
    return cache.LoadIfNeeded(tags, true);
}

Lines Completed(const CompletionCache& cache, const char* pattern, unsigned long max = 200)
{
    Lines names;
    cache.GetCompletions(pattern, names, max);
    return names;
}

// Entries in the cache's form, in the given order.
class EntryList {
public:
    explicit EntryList(const Lines& fullNames)
    {
        for (const std::string& full : fullNames) {
            std::string name;
            std::string qualifier;
            NameAndQualifier::Split(full, name, qualifier);
            entries.push_back(NameAndQualifier::NewEntry(name.c_str(), static_cast<int>(name.length()),
                                                         qualifier.c_str(), static_cast<int>(qualifier.length())));
        }
    }
    ~EntryList() { CompletionCache::ClearCache(entries); }

    std::vector<char*> entries;
};

Lines Shown(const std::vector<char*>& entries)
{
    Lines shown;
    for (const char* entry : entries)
        shown.push_back(NameAndQualifier::JoinFromEntry(entry));
    return shown;
}

Lines Loaded(const Lines& fullNames)
{
    const TagsFolder folder(TagsOf(fullNames));
    const BEntry tags = folder.Entry();
    TagFile file(&tags, "", false);
    EntryList list({});
    CompletionCache::LoadSelf(file, list.entries);
    return Shown(list.entries);
}

// Ways to change a tags file.
using Change = void (*)(const TagsFolder& folder, const std::string& tags);

void RewriteInPlace(const TagsFolder& folder, const std::string& tags)
{
    folder.WriteTags(tags);
}

void ReplaceByRename(const TagsFolder& folder, const std::string& tags)
{
    const std::string unfinished = folder.directory.Write("tags.tmp", tags);
    SetTime(unfinished, NewTime());
    std::filesystem::rename(unfinished, folder.Tags());
}

class CompletionCacheTest : public testing::Test {
protected:
    ~CompletionCacheTest() override { JoinThreads(); }

    bool Load() { return ::Load(cache, local.Entry(), system.Entry()); }

    // Starts a load if necessary and waits for its end; returns whether there was one.
    bool Reloads(const BEntry& localTags, const BEntry& systemTags)
    {
        const bool starts = !::Load(cache, localTags, systemTags);
        JoinThreads();
        EXPECT_TRUE(::Load(cache, localTags, systemTags)) << "one load is enough";
        return starts;
    }
    bool Reloads() { return Reloads(local.Entry(), system.Entry()); }

    TagsFolder local{TagsOf({"localName"})};
    TagsFolder system{TagsOf({"systemName"})};
    CompletionCache cache;
};

} // namespace

TEST(MallocedUnique, LeavesNullsAndDuplicatesInTheTail)
{
    EntryList list({"a", "a", "a", "b", "b", "c"});
    std::vector<char*>& entries = list.entries;
    const auto end = malloced_unique(entries.begin(), entries.end(), NameAndQualifier::MatchCompletionCacheEntries);
    ASSERT_EQ(end - entries.begin(), 3);
    EXPECT_STREQ(entries[0], "a");
    EXPECT_STREQ(entries[1], "b");
    EXPECT_STREQ(entries[2], "c");
    EXPECT_EQ(std::count(end, entries.end(), nullptr), 2) << "where b and c were";
    EXPECT_STREQ(entries[4], "b") << "a duplicate that nobody has freed";
}

TEST(MallocedUnique, LeavesARangeWithoutDuplicatesAlone)
{
    for (const Lines& names : {Lines{}, Lines{"a"}, Lines{"a", "b", "A::b"}}) {
        EntryList list(names);
        EXPECT_EQ(
            malloced_unique(list.entries.begin(), list.entries.end(), NameAndQualifier::MatchCompletionCacheEntries),
            list.entries.end());
        EXPECT_EQ(Shown(list.entries), names);
    }
}

TEST(CompletionCacheEntries, AreSortedByNameThenQualifierWithoutDuplicates)
{
    const Lines expected = {"B", "a", "B::a", "b::a", "ab"};
    EXPECT_EQ(Loaded({"B", "b::a", "a", "B::a", "a", "B::a", "ab"}), expected) << "a sorted file";
    EXPECT_EQ(Loaded({"ab", "b::a", "B", "a", "B::a", "a", "B::a"}), expected) << "any other";
}

TEST(CompletionCacheEntries, HaveTheSameOrderForAnyOrderOfLines)
{
    std::mt19937 random(7);
    Lines names;
    for (int i = 0; i < 3000; ++i)
        names.push_back("s" + std::to_string(random() % 40) + "::n" + std::to_string(random() % 200));
    const Lines shuffled = Loaded(names);
    std::stable_sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        return a.substr(a.find("::")) < b.substr(b.find("::"));
    });
    EXPECT_EQ(Loaded(names), shuffled);
    EXPECT_EQ(shuffled.size(), std::set<std::string>(names.begin(), names.end()).size());
}

TEST(CompletionCacheEntries, NonAsciiNamesComeLast)
{
    EXPECT_EQ(Loaded({"\xc3\xa9tat", "z", "a"}), (Lines{"a", "z", "\xc3\xa9tat"}));
}

TEST_F(CompletionCacheTest, LoadsInTheBackgroundAndRefusesSearchesMeanwhile)
{
    const HeldTagsFile held;
    EXPECT_FALSE(::Load(cache, held.Entry(), system.Entry()));
    EXPECT_FALSE(::Load(cache, held.Entry(), system.Entry())) << "for either half";
    EXPECT_FALSE(Load()) << "and starts no second load";
    Tags tags = Make(held.Entry(), system.Entry());
    EXPECT_FALSE(cache.LoadIfNeeded(tags, false));
    held.Open() << TagsOf({"heldName"});
    JoinThreads();
    EXPECT_TRUE(cache.LoadIfNeeded(tags, false));
    EXPECT_EQ(Completed(cache, "heldN"), Lines{"heldName"});
    EXPECT_EQ(Completed(cache, "system"), Lines{"systemName"});
    EXPECT_EQ(Completed(cache, "local"), Lines{}) << "the second load never ran";
}

// The other half is complete, but a list of its names alone would change under the user's hands.
TEST_F(CompletionCacheTest, RefusesSearchesWhileOneHalfIsReloaded)
{
    ASSERT_TRUE(Reloads());
    const HeldTagsFile held;
    EXPECT_FALSE(::Load(cache, held.Entry(), system.Entry()));
    Tags tags = Make(held.Entry(), system.Entry());
    const bool inBackground = cache.LoadIfNeeded(tags, true);
    const bool inForeground = cache.LoadIfNeeded(tags, false);
    held.Open() << TagsOf({"heldName"});
    JoinThreads();
    EXPECT_FALSE(inBackground);
    EXPECT_FALSE(inForeground);
    EXPECT_TRUE(cache.LoadIfNeeded(tags, true));
    EXPECT_EQ(Completed(cache, "heldN"), Lines{"heldName"});
}

TEST_F(CompletionCacheTest, ALoadWithoutAThreadIsRetriedAtTheNextKeyStroke)
{
    Complaints complaints;
    {
        const RefusedThreads refused;
        for (int key = 0; key < 3; ++key)
            EXPECT_FALSE(Load());
        EXPECT_EQ(complaints.Take().size(), 1u) << "not once a key";
        EXPECT_EQ(Completed(cache, "local"), Lines{});
    }
    EXPECT_TRUE(Reloads());
    EXPECT_EQ(Completed(cache, "local"), Lines{"localName"});
    EXPECT_EQ(Completed(cache, "system"), Lines{"systemName"});
}

TEST_F(CompletionCacheTest, AReloadWithoutAThreadKeepsTheNames)
{
    ASSERT_TRUE(Reloads());
    local.WriteTags(TagsOf({"newLocal"}));
    {
        const Complaints complaints;
        const RefusedThreads refused;
        EXPECT_FALSE(Load());
        EXPECT_EQ(Completed(cache, "local"), Lines{"localName"});
    }
    EXPECT_TRUE(Reloads());
    EXPECT_EQ(Completed(cache, "newLocal"), Lines{"newLocal"});
}

TEST_F(CompletionCacheTest, NeverLoadsInTheForeground)
{
    Tags tags = Make(local.Entry(), system.Entry());
    EXPECT_TRUE(cache.LoadIfNeeded(tags, false));
    JoinThreads();
    EXPECT_EQ(Completed(cache, "local"), Lines{}) << "the cache is searched as it is";
    EXPECT_TRUE(Reloads());
    EXPECT_EQ(Completed(cache, "local"), Lines{"localName"});
}

// The record of a stale half is dropped at the first look, even if loading is not allowed there.
TEST_F(CompletionCacheTest, AStaleHalfFoundInTheForegroundIsLoadedLater)
{
    ASSERT_TRUE(Reloads());
    const BEntry entry = local.Entry();
    const time_t loaded = TagFile(&entry, "", false).TagTime();
    local.WriteTags(TagsOf({"newLocal"}));
    Tags tags = Make(local.Entry(), system.Entry());
    EXPECT_TRUE(cache.LoadIfNeeded(tags, false));
    EXPECT_EQ(Completed(cache, "local"), Lines{"localName"});
    SetTime(local.Tags(), loaded); // not later than the loaded one
    EXPECT_TRUE(Reloads());
    EXPECT_EQ(Completed(cache, "newLocal"), Lines{"newLocal"});
}

TEST_F(CompletionCacheTest, LoadsOnlyTheStaleHalf)
{
    ASSERT_TRUE(Reloads());
    // A half whose file keeps its time is not read again, so new content does not show.
    const auto rewrite = [](const TagsFolder& folder, const char* name) {
        const BEntry entry = folder.Entry();
        const time_t time = TagFile(&entry, "", false).TagTime();
        folder.directory.Write("tags", TagsOf({name}));
        SetTime(folder.Tags(), time);
    };
    rewrite(system, "unseenSystem");
    local.WriteTags(TagsOf({"newLocal"}));
    EXPECT_TRUE(Reloads());
    EXPECT_EQ(Completed(cache, "newLocal"), Lines{"newLocal"});
    EXPECT_EQ(Completed(cache, "systemName"), Lines{"systemName"});
    EXPECT_EQ(Completed(cache, "unseen"), Lines{});

    rewrite(local, "unseenLocal");
    SetTime(system.Tags(), NewTime());
    EXPECT_TRUE(Reloads());
    EXPECT_EQ(Completed(cache, "unseen"), Lines{"unseenSystem"});
    EXPECT_EQ(Completed(cache, "newLocal"), Lines{"newLocal"});
}

TEST_F(CompletionCacheTest, AnotherLocalFileLoadsTheLocalHalf)
{
    ASSERT_TRUE(Reloads());
    const TagsFolder other(TagsOf({"otherName"}));
    EXPECT_TRUE(Reloads(other.Entry(), system.Entry()));
    EXPECT_EQ(Completed(cache, "otherName"), Lines{"otherName"});
    EXPECT_EQ(Completed(cache, "localName"), Lines{});
    EXPECT_EQ(Completed(cache, "systemName"), Lines{"systemName"});
}

// Only the time of the system's file is compared, not its path.
TEST_F(CompletionCacheTest, AnotherSystemFileLoadsNothing)
{
    ASSERT_TRUE(Reloads());
    const TagsFolder other(TagsOf({"otherName"}));
    EXPECT_FALSE(Reloads(local.Entry(), other.Entry()));
    EXPECT_EQ(Completed(cache, "systemName"), Lines{"systemName"});
}

TEST_F(CompletionCacheTest, AnOlderFileIsNotReloaded)
{
    ASSERT_TRUE(Reloads());
    local.directory.Write("tags", TagsOf({"restored"}));
    SetTime(local.Tags(), 1000);
    EXPECT_FALSE(Reloads());
    EXPECT_EQ(Completed(cache, "local"), Lines{"localName"});
}

// After the clock was ahead and has been corrected: only a later file is loaded, and a file elsewhere whatever its
// time.
TEST_F(CompletionCacheTest, AFileFromTheFutureIsLoadedOnceAndAgainWhenItGetsNewer)
{
    const time_t ahead = ::time(nullptr) + 1'000'000;
    for (const TagsFolder* half : {&local, &system}) {
        SetTime(half->Tags(), ahead);
        EXPECT_TRUE(Reloads());
        EXPECT_FALSE(Reloads());
        half->directory.Write("tags", TagsOf({"renewed"}));
        EXPECT_FALSE(Reloads()) << "it is older now";
        EXPECT_EQ(Completed(cache, "renewed"), Lines{});
        SetTime(half->Tags(), ahead + 1);
        EXPECT_TRUE(Reloads());
        EXPECT_EQ(Completed(cache, "renewed"), Lines{"renewed"});
        half->directory.Write("tags", TagsOf({"other"}));
        SetTime(half->Tags(), ahead + 2);
        EXPECT_TRUE(Reloads());
    }
    local.directory.Write("tags", TagsOf({"made later by a clock set right"}));
    const TagsFolder other;
    EXPECT_TRUE(Reloads(other.Entry(), system.Entry()));
    EXPECT_TRUE(Reloads());
    EXPECT_EQ(Completed(cache, "made"), Lines{"made later by a clock set right"});
}

TEST_F(CompletionCacheTest, AVanishedFileKeepsItsNames)
{
    ASSERT_TRUE(Reloads());
    std::filesystem::remove(local.Tags());
    std::filesystem::remove(system.Tags());
    EXPECT_FALSE(Reloads());
    EXPECT_EQ(Completed(cache, "local"), Lines{"localName"});
    EXPECT_EQ(Completed(cache, "system"), Lines{"systemName"});
    local.WriteTags(TagsOf({"cameBack"}));
    EXPECT_TRUE(Reloads());
    EXPECT_EQ(Completed(cache, "came"), Lines{"cameBack"});
}

// Without a local tags file the old local names are wrong, but they are offered until a new file appears.
TEST_F(CompletionCacheTest, ADisappearingLocalFileLoadsNothing)
{
    ASSERT_TRUE(Reloads());
    EXPECT_FALSE(Reloads(BEntry(), system.Entry()));
    EXPECT_EQ(Completed(cache, "local"), Lines{"localName"});
    local.directory.Write("tags", TagsOf({"renewed"}));
    SetTime(local.Tags(), 1000);
    EXPECT_TRUE(Reloads()) << "a local file appears; it is read whatever its time";
    EXPECT_EQ(Completed(cache, "renewed"), Lines{"renewed"});
}

TEST_F(CompletionCacheTest, AnAppearingLocalFileIsLoaded)
{
    EXPECT_TRUE(Reloads(BEntry(), system.Entry()));
    EXPECT_EQ(Completed(cache, "local"), Lines{});
    EXPECT_TRUE(Reloads());
    EXPECT_EQ(Completed(cache, "local"), Lines{"localName"});
}

TEST_F(CompletionCacheTest, AnUnreadableFileIsNotRetriedAtEachKeyStroke)
{
    std::filesystem::remove(system.Tags());
    EXPECT_TRUE(Reloads());
    EXPECT_FALSE(Reloads());
    EXPECT_EQ(Completed(cache, "local"), Lines{"localName"});
    system.WriteTags(TagsOf({"appeared"}));
    EXPECT_TRUE(Reloads());
    EXPECT_EQ(Completed(cache, "appeared"), Lines{"appeared"});
}

TEST_F(CompletionCacheTest, FilesWithoutNamesAreLoadedOnce)
{
    local.WriteTags("");
    system.WriteTags("");
    EXPECT_TRUE(Reloads());
    EXPECT_FALSE(Reloads());
    EXPECT_EQ(Completed(cache, ""), Lines{});
}

// Without a home directory there is no path to remember, so every key stroke begins a load, and searches find nothing.
TEST_F(CompletionCacheTest, ItIsAlwaysLoadingWithoutASystemPath)
{
    for (int key = 0; key < 3; ++key) {
        EXPECT_FALSE(::Load(cache, local.Entry(), BEntry()));
        JoinThreads();
    }
}

TEST_F(CompletionCacheTest, AFileWrittenWhileItIsReadIsReadAgain)
{
    for (const bool isLocal : {true, false}) {
        CompletionCache cache;
        const HeldTagsFile held;
        SetTime(held.Path(), NewTime());
        const auto load = [&] {
            return isLocal ? ::Load(cache, held.Entry(), system.Entry()) : ::Load(cache, local.Entry(), held.Entry());
        };
        EXPECT_FALSE(load());
        {
            std::ofstream writer = held.Open();
            writer << TagsOf({"first"});
            SetTime(held.Path(), NewTime());
        }
        JoinThreads();
        const bool isLoaded = load();
        EXPECT_FALSE(isLoaded) << "later than when the load began";
        if (!isLoaded)
            held.Open() << TagsOf({"second"});
        JoinThreads();
        EXPECT_EQ(Completed(cache, "first"), Lines{});
        EXPECT_EQ(Completed(cache, "second"), Lines{"second"});
    }
}

// When the load is held at the system's file, the local half has been read, sorted and rid of duplicates.
TEST_F(CompletionCacheTest, AFileReplacedBetweenItsReadingAndTheEndOfTheLoadIsReadAgain)
{
    for (const Change change : {RewriteInPlace, ReplaceByRename}) {
        CompletionCache cache;
        const HeldTagsFile held;
        const auto load = [&] { return ::Load(cache, local.Entry(), held.Entry()); };
        local.WriteTags(TagsOf({"first", "both"}));
        EXPECT_FALSE(load());
        {
            const std::ofstream writer = held.Open();
            change(local, TagsOf({"both", "second"}));
        }
        JoinThreads();
        EXPECT_EQ(Completed(cache, ""), (Lines{"both", "first"})) << "all of the old names";
        EXPECT_FALSE(load()) << "and then the new ones";
        JoinThreads();
        EXPECT_TRUE(load());
        EXPECT_EQ(Completed(cache, ""), (Lines{"both", "second"}));
    }
}

TEST_F(CompletionCacheTest, AFileReplacedAfterTheLoadIsReadAtTheNextLook)
{
    ASSERT_TRUE(Reloads());
    for (const Change change : {RewriteInPlace, ReplaceByRename})
        for (const TagsFolder* half : {&local, &system})
            for (const char* name : {"first", "second"}) {
                change(*half, TagsOf({name}));
                EXPECT_TRUE(Reloads());
                EXPECT_EQ(Completed(cache, name), Lines{name});
            }
}

TEST_F(CompletionCacheTest, LeavesNoFileOpen)
{
    const long before = OpenDescriptors();
    ASSERT_TRUE(Reloads());
    EXPECT_EQ(OpenDescriptors(), before);
}

TEST_F(CompletionCacheTest, FindsNothingBeforeTheFirstLoad)
{
    EXPECT_EQ(Completed(cache, "a"), Lines{});
}

TEST_F(CompletionCacheTest, BothHalvesGiveOneSortedListWithoutDuplicates)
{
    local.WriteTags(TagsOf({"nb", "nc", "nd"}));
    system.WriteTags(TagsOf({"na", "nc", "ne", "z"}));
    ASSERT_TRUE(Reloads());
    EXPECT_EQ(Completed(cache, "n"), (Lines{"na", "nb", "nc", "nd", "ne"}));
    EXPECT_EQ(Completed(cache, "n", 3), (Lines{"na", "nb", "nc"})) << "the first of both together";
    EXPECT_EQ(Completed(cache, "n", 0), Lines{});
    Lines used = {"was there before"};
    cache.GetCompletions("nb", used, kMany);
    EXPECT_EQ(used, Lines{"nb"});
}

TEST_F(CompletionCacheTest, PlainPatternsGiveBareNamesAndQualifiedOnesFullNames)
{
    local.WriteTags(TagsOf({"Outer::name", "Outer::nameToo", "Other::name", "A::Outer::nap", "name"}));
    ASSERT_TRUE(Reloads());
    struct Case {
        const char* why;
        const char* pattern;
        Lines names;
    };
    const Case cases[] = {
        {"names without their scopes, each once", "nam", {"name", "nameToo"}},
        {"names with their scopes", "Outer::na", {"A::Outer::nap", "Outer::name", "Outer::nameToo"}},
        {"the scope has to match to its inner end", "ter::na", {}},
        {"the global scope is no scope", "::na", {"name", "nameToo", "nap"}},
        {"case counts", "Nam", {}},
        {"an empty pattern is the beginning of every name", "", {"name", "nameToo", "nap", "systemName"}},
        {"nothing behind the scope: a name as a whole", "Outer::", {}},
    };
    for (const Case& row : cases)
        EXPECT_EQ(Completed(cache, row.pattern), row.names) << row.why;
}

// The comparison ignores template arguments at any depth, also those of outer scopes.
TEST_F(CompletionCacheTest, FindsNamesInScopesWhoseTemplateArgumentsAreOnSeveralLevels)
{
    local.WriteTags(
        TagsOf({"A<x>::Inner<Foo<y>>::fooA", "Inner<Foo<y>>::fooB", "Inner<y>::fooC", "A<x>::Other<Foo<y>>::fooD"}));
    ASSERT_TRUE(Reloads());
    EXPECT_EQ(Completed(cache, "Inner<Foo<z>>::foo"),
              (Lines{"A<x>::Inner<Foo<y>>::fooA", "Inner<Foo<y>>::fooB", "Inner<y>::fooC"}));
}

TEST_F(CompletionCacheTest, APatternWithAColonFindsSelectors)
{
    local.WriteTags(TagsOf({"initWith", "initWithFrame:", "initWithFrame:style:", "initWithFrames:"}));
    ASSERT_TRUE(Reloads());
    EXPECT_EQ(Completed(cache, "initWithFrame:"), (Lines{"initWithFrame:", "initWithFrame:style:"}));
    EXPECT_EQ(Completed(cache, "initWithFrame"), (Lines{"initWithFrame:", "initWithFrame:style:", "initWithFrames:"}));
    EXPECT_EQ(Completed(cache, "initWithFrame:s"), Lines{"initWithFrame:style:"});
}

TEST(CompletionCacheList, IgnoresTheLimitAndAppends)
{
    const EntryList list({"na", "A::na", "nb", "nc"});
    const CompletionCache cache;
    Lines names = {"before"};
    cache.GetCompletions("n", names, 1, list.entries);
    EXPECT_EQ(names, (Lines{"before", "na", "na", "nb", "nc"})) << "whoever asks drops the duplicates";
    names.clear();
    cache.GetCompletions("A::n", names, 0, list.entries);
    EXPECT_EQ(names, Lines{"A::na"});
}

TEST_F(CompletionCacheTest, FindsTheSameAsALinearSearch)
{
    std::mt19937 random(11);
    const char letters[] = "abA_:\x80";
    std::set<std::string> names;
    while (names.size() < 3000) {
        std::string name;
        for (size_t length = 1 + random() % 5; length > 0; --length)
            name += letters[random() % (sizeof letters - 1)];
        if (name.find("::") == std::string::npos)
            names.insert(name);
    }
    std::string tags;
    for (const std::string& name : names)
        for (unsigned long scope = random() % 40; scope % 4 != 3; ++scope)
            tags += TagLine(name, "a.cpp", 1, "f", "class:S" + std::to_string(scope));
    for (const std::string& name : names)
        tags += TagLine(name, "a.cpp", 1, "f");
    local.WriteTags(tags);
    system.WriteTags("");
    ASSERT_TRUE(Reloads());
    for (const std::string& pattern : names) {
        Lines expected;
        std::copy_if(names.begin(), names.end(), std::back_inserter(expected),
                     [&](const std::string& name) { return name.compare(0, pattern.length(), pattern) == 0; });
        ASSERT_EQ(Completed(cache, pattern.c_str(), kMany), expected) << pattern;
        expected.resize(std::min<size_t>(expected.size(), 5));
        ASSERT_EQ(Completed(cache, pattern.c_str(), 5), expected) << pattern;
    }
}

// Scopes are compared without template arguments, from their inner ends, by the parts between colons. The search skips
// most of them, but must not skip any that match.
TEST_F(CompletionCacheTest, FindsTheSameInScopesAsALinearSearch)
{
    std::mt19937 random(13);
    const auto text = [&](const Lines& pieces, size_t most) {
        std::string made;
        for (size_t count = 1 + random() % most; count > 0; --count)
            made += pieces[random() % pieces.size()];
        return made;
    };
    const Lines kScopePieces = {"a", "b", "a", "::", "::", ":", "<a>", "<b", ">", "\x80"};
    std::string tags;
    for (int i = 0; i < 4000; ++i)
        tags += TagLine(text({"n", "m"}, 3), "a.cpp", 1, "f", "class:" + text(kScopePieces, 6));
    local.WriteTags(tags);
    system.WriteTags(tags.substr(0, tags.find('\n', tags.size() / 2) + 1));
    ASSERT_TRUE(Reloads());
    EntryList list({});
    const BEntry entry = local.Entry();
    TagFile file(&entry, "", false);
    CompletionCache::LoadSelf(file, list.entries);

    size_t found = 0;
    for (int i = 0; i < 2000; ++i) {
        const std::string pattern = text(kScopePieces, 4) + "::" + text({"n", "m"}, 2);
        Lines expected;
        cache.GetCompletions(pattern.c_str(), expected, kMany, list.entries);
        std::sort(expected.begin(), expected.end());
        expected.erase(std::unique(expected.begin(), expected.end()), expected.end());
        ASSERT_EQ(Completed(cache, pattern.c_str(), kMany), expected) << pattern;
        found += !expected.empty();
        for (size_t most : {0, 1, 7})
            ASSERT_EQ(Completed(cache, pattern.c_str(), most),
                      Lines(expected.begin(), expected.begin() + std::min(most, expected.size())))
                << pattern << ", the first " << most;
    }
    EXPECT_GT(found, 500u) << "enough scopes match";
}
