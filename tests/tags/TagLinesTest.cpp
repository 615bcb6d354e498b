// What a reader learns of a tags file, and what it believes.

#include "tagsfile/TagLines.h"

#include "tags/Tags.h"
#include "tagsfile/SortedClaim.h"
#include "tests/tags/TagsFolder.h"
#include "tests/tagsfile/LearnedOrder.h"

#include <algorithm>
#include <sys/stat.h>

namespace {

// Sorted names, enough of them for the order to be kept.
std::string ManyTags(const std::string& start = "name")
{
    std::string tags;
    for (int i = 10'000; i < 14'000; ++i)
        tags += TagLine(start + std::to_string(i), "a.cpp", i, "f");
    return tags;
}

std::string TagsOutOfOrder()
{
    return ManyTags() + ManyTags("a");
}

const std::string kFarOn = "name13";

// Whether a search for a name in the middle begins reading there.
bool IsBisected(const std::string& path, const std::string& start = kFarOn)
{
    tagsfile::TagLines lines;
    EXPECT_TRUE(lines.Open(path.c_str()));
    const bool skips = lines.SkipTo(start);
    std::string_view line;
    EXPECT_TRUE(lines.Next(line));
    std::string first;
    std::getline(std::ifstream(path), first);
    if (start == kFarOn) {
        EXPECT_EQ(skips, line != first + "\n");
    }
    lines.Close();
    return skips;
}

void ReadAll(const std::string& path)
{
    tagsfile::TagLines lines;
    EXPECT_TRUE(lines.Open(path.c_str()));
    for (std::string_view line; lines.Next(line);) {
    }
    lines.Close();
}

// Searches as lookups do: stops at the first other name after a match.
void FindAndStop(const BEntry& tags, const std::string& pattern)
{
    TagFile file(&tags, pattern, false);
    ASSERT_TRUE(file.Rewind());
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
    size_t found = 0;
    while (file.NextMatch(name, qualifier, kind, ref, line, found > 0, TagFile::ExactMatch()))
        ++found;
    EXPECT_EQ(found, 1u);
    file.Done();
}

// The bytes that this process has read so far, from any files.
long BytesRead()
{
    std::ifstream counts("/proc/self/io");
    std::string word;
    long count = 0;
    counts >> word >> count;
    EXPECT_EQ(word, "rchar:");
    return count;
}

// Tags with the claim that they are in order, between the pseudo-tags 'before' and 'behind'.
std::string Claiming(const std::string& tags, const std::string& before = "", const std::string& behind = "")
{
    const std::string start = before + std::string(tagsfile::kSortedClaim);
    const std::string rest = "\t//\n" + behind + tags;
    const size_t size = start.length() + tagsfile::SortedClaimValue(0).length() + rest.length();
    return start + tagsfile::SortedClaimValue(static_cast<off_t>(size)) + rest;
}

// The modification time that proves a claim of that size.
timespec TimeOf(const std::string& tags)
{
    return {1'234'567'890, tagsfile::SortedClaimNanoseconds(static_cast<off_t>(tags.length()))};
}

void WriteMade(const TagsFolder& folder, const std::string& tags, const timespec& made)
{
    std::filesystem::remove(folder.Tags());
    folder.directory.Write("tags", tags);
    const timespec times[] = {made, made};
    ASSERT_EQ(::utimensat(AT_FDCWD, folder.Tags().c_str(), times, 0), 0);
}

} // namespace

TEST(TagLines, AreBisectedOnceTheyHaveBeenReadToTheEnd)
{
    const TagsFolder folder(ManyTags());
    EXPECT_FALSE(IsBisected(folder.Tags())) << "nothing is known yet";
    EXPECT_FALSE(IsBisected(folder.Tags())) << "nor from one line";
    ReadAll(folder.Tags());
    EXPECT_TRUE(IsBisected(folder.Tags()));
    EXPECT_FALSE(IsBisected(folder.Tags(), "")) << "for nothing in particular all lines are needed";
    EXPECT_FALSE(IsBisected(folder.Tags(), "name\n")) << "a line break is in no name";
}

TEST(TagLines, EveryReaderLearnsTheOrder)
{
    const struct {
        const char* why;
        void (*read)(const BEntry& tags);
        bool learns;
    } kCases[] = {
        {"an exact search", [](const BEntry& tags) { Matches(tags, "nothing"); }, true},
        {"a partial search", [](const BEntry& tags) { Matches(tags, "name12", TagFile::PartialMatch()); }, true},
        {"any match", [](const BEntry& tags) { Matches(tags, "", TagFile::AnyMatch()); }, true},
        {"names for completions", [](const BEntry& tags) { Names(tags); }, true},
        {"paths", [](const BEntry& tags) { Paths(tags); }, true},
        {"a search that has found a name far on", [](const BEntry& tags) { FindAndStop(tags, "name13500"); }, true},
        {"a search that has found a name near by: it is not worth it",
         [](const BEntry& tags) { FindAndStop(tags, "name10100"); }, false},
        {"a search that stops early", [](const BEntry& tags) { Matches(tags, "x", TagFile::ExactMatch(), true); },
         false},
    };
    for (const auto& c : kCases) {
        const TagsFolder folder(ManyTags());
        c.read(folder.Entry());
        EXPECT_EQ(IsBisected(folder.Tags()), c.learns) << c.why;
    }
}

TEST(TagLines, AreReadFromTheBeginningWhenUnsorted)
{
    const TagsFolder folder(TagsOutOfOrder());
    ReadAll(folder.Tags());
    EXPECT_FALSE(IsBisected(folder.Tags()));
    EXPECT_EQ(Matches(folder.Entry(), "a10000").size(), 1u);
}

TEST(TagLines, AreKnownToBeUnsortedAtTheFirstUnsortedPair)
{
    std::string more;
    for (char start = 'b'; start <= 'z'; ++start)
        more += ManyTags(std::string(1, start));
    const TagsFolder folder(TagsOutOfOrder() + more);
    const auto size = static_cast<long>(std::filesystem::file_size(folder.Tags()));
    for (const char* when : {"unknown", "known"}) {
        const long before = BytesRead();
        FindAndStop(folder.Entry(), "name13500");
        EXPECT_LT(BytesRead() - before, size / 4) << when << ": the rest is not read";
        const std::optional<tagsfile::FileOrder> order =
            tagsfile::KnownFiles::Instance().Find(IdentityOf(folder.Tags()));
        ASSERT_TRUE(order.has_value()) << when;
        EXPECT_FALSE(order->namesInOrder) << when;
    }
}

TEST(TagLines, AreReadFromTheBeginningAgainAfterAnyChange)
{
    const TagsFolder folder;
    const struct {
        const char* why;
        void (*change)(const TagsFolder& folder);
    } kCases[] = {
        {"another time, the same size",
         [](const TagsFolder& folder) {
             folder.directory.Write("tags", ManyTags("eman"));
             SetTime(folder.Tags(), NewTime());
         }},
        {"touched", [](const TagsFolder& folder) { SetTime(folder.Tags(), NewTime()); }},
        {"made older by a clock that was set back", [](const TagsFolder& folder) { SetTime(folder.Tags(), 1000); }},
        {"made by a clock that is ahead",
         [](const TagsFolder& folder) { SetTime(folder.Tags(), ::time(nullptr) + 1'000'000); }},
        {"grown, with the time put back",
         [](const TagsFolder& folder) {
             const auto time = std::filesystem::last_write_time(folder.Tags());
             std::ofstream(folder.Tags(), std::ios::app) << "a\n";
             std::filesystem::last_write_time(folder.Tags(), time);
         }},
        {"replaced by a file of the same size and time",
         [](const TagsFolder& folder) {
             const auto time = std::filesystem::last_write_time(folder.Tags());
             folder.directory.Write("new", ManyTags("eman"));
             std::filesystem::last_write_time(folder.directory / "new", time);
             std::filesystem::rename(folder.directory / "new", folder.Tags());
         }},
    };
    for (const auto& c : kCases) {
        folder.WriteTags(ManyTags());
        ReadAll(folder.Tags());
        EXPECT_TRUE(IsBisected(folder.Tags())) << c.why;
        c.change(folder);
        EXPECT_FALSE(IsBisected(folder.Tags())) << c.why;
    }
}

TEST(TagLines, AFileFromTheFutureIsLearnedAndReadAgainAfterAChange)
{
    const TagsFolder folder(ManyTags());
    SetTime(folder.Tags(), ::time(nullptr) + 1'000'000);
    ReadAll(folder.Tags());
    EXPECT_TRUE(IsBisected(folder.Tags()));
    folder.directory.Write("tags", ManyTags("eman"));
    EXPECT_FALSE(IsBisected(folder.Tags())) << "it is older now";
    EXPECT_EQ(Matches(folder.Entry(), "eman10000").size(), 1u);
}

TEST(TagLines, NothingIsLearnedFromAFileThatHasJustChanged)
{
    const TagsFolder folder;
    folder.directory.Write("tags", ManyTags());
    ReadAll(folder.Tags());
    EXPECT_FALSE(IsBisected(folder.Tags())) << "another change may come in the same instant";
}

TEST(TagLines, NothingIsLearnedFromAFileThatChangesMeanwhile)
{
    const struct {
        const char* why;
        void (*change)(const std::string& path);
    } kCases[] = {
        {"grows", [](const std::string& path) { std::ofstream(path, std::ios::app) << "z\n"; }},
        {"is cut", [](const std::string& path) { std::filesystem::resize_file(path, 70'000); }},
        {"is touched", [](const std::string& path) { SetTime(path, NewTime()); }},
    };
    for (const auto& c : kCases) {
        const TagsFolder folder(ManyTags());
        tagsfile::TagLines lines;
        ASSERT_TRUE(lines.Open(folder.Tags().c_str()));
        std::string_view line;
        ASSERT_TRUE(lines.Next(line));
        c.change(folder.Tags());
        while (lines.Next(line)) {
        }
        lines.Close();
        EXPECT_FALSE(IsBisected(folder.Tags())) << c.why;
    }
}

// The reader then reads parts of two files, one of which comes back: the order seen is not that of the other.
TEST(TagLines, NothingIsLearnedFromAFileThatChangesMeanwhileAndIsChangedBack)
{
    const std::string original = TagsOutOfOrder();
    const std::string inOrder = ManyTags() + ManyTags("z");
    ASSERT_EQ(original.size(), inOrder.size());
    const TagsFolder folder(original);
    const base::FileIdentity identity = IdentityOf(folder.Tags());
    tagsfile::TagLines lines;
    ASSERT_TRUE(lines.Open(folder.Tags().c_str()));
    std::string_view line;
    ASSERT_TRUE(lines.Next(line));
    folder.WriteTags(inOrder);
    std::string last;
    while (lines.Next(line))
        last = line;
    lines.Close();
    ASSERT_EQ(last, inOrder.substr(inOrder.size() - last.size())) << "the changed lines have been read";

    folder.directory.Write("tags", original);
    SetTime(folder.Tags(), identity.modified.tv_sec);
    ASSERT_EQ(IdentityOf(folder.Tags()), identity) << "as if nothing had been changed";
    EXPECT_FALSE(IsBisected(folder.Tags()));
    EXPECT_EQ(Matches(folder.Entry(), "a13999").size(), 1u);
}

TEST(TagLines, NothingIsLearnedFromSmallFiles)
{
    const TagsFolder folder(TagLine("name1", "a.cpp", 1, "f") + TagLine("name2", "a.cpp", 1, "f"));
    ReadAll(folder.Tags());
    EXPECT_FALSE(IsBisected(folder.Tags(), "name2"));
}

TEST(TagLines, ASearchSurvivesAnyChangeOfTheFile)
{
    const struct {
        const char* why;
        void (*change)(const std::string& path);
        size_t matches;
    } kCases[] = {
        {"nothing happens", [](const std::string&) {}, 1000},
        {"cut to nothing", [](const std::string& path) { std::filesystem::resize_file(path, 0); }, 0},
        {"removed", [](const std::string& path) { std::filesystem::remove(path); }, 1000},
        {"overwritten with what has no lines",
         [](const std::string& path) { std::ofstream(path, std::ios::binary) << std::string(1'000'000, 'x'); }, 0},
        {"overwritten with names out of order",
         [](const std::string& path) {
             std::ofstream file(path, std::ios::binary);
             for (const char* start : {"zzzz", "name", "aaaa"})
                 file << ManyTags(start);
         },
         1000},
    };
    for (const auto& c : kCases) {
        const TagsFolder folder(ManyTags());
        ReadAll(folder.Tags());
        const BEntry tags = folder.Entry();
        TagFile file(&tags, "name12", false);
        ASSERT_TRUE(file.Rewind());
        c.change(folder.Tags()); // changes it after it was recognised as a known file
        std::string name;
        std::string qualifier;
        char kind;
        EntryRef ref;
        int line;
        size_t matches = 0;
        while (file.NextMatch(name, qualifier, kind, ref, line, false, TagFile::PartialMatch()))
            ++matches;
        file.Done();
        EXPECT_EQ(matches, c.matches) << c.why;
    }
}

TEST(TagLines, ATagsFilesClaimIsTrustedWhileItHolds)
{
    const TagsFolder folder;
    const std::string tags = Claiming(ManyTags());
    const timespec made = TimeOf(tags);
    std::string pretending = tags;
    pretending.replace(2, 1, "S");
    const std::string unfinished =
        std::string(tagsfile::kSortedClaim) + tagsfile::SortedClaimValue(0) + "\t//\n" + ManyTags();
    const std::string within = ManyTags("  name");
    const struct {
        const char* why;
        std::string tags;
        timespec made;
        bool believed;
    } kCases[] = {
        {"size and time as it says", tags, made, true},
        {"the same nanoseconds of another second", tags, {made.tv_sec + 5, made.tv_nsec}, true},
        {"a nanosecond later", tags, {made.tv_sec, made.tv_nsec + 1}, false},
        {"a time in seconds", tags, {made.tv_sec, 0}, false},
        {"another size", tags + "zz\n", TimeOf(tags + "zz\n"), false},
        {"another size, the time put back", tags + "zz\n", made, false},
        {"a byte less", tags.substr(0, tags.length() - 1), made, false},
        {"no size", unfinished, TimeOf(unfinished), false},
        {"another pseudo-tag", pretending, made, false},
        {"within the tags: there it is none", Claiming(ManyTags(), within), TimeOf(Claiming(ManyTags(), within)),
         false},
        {"sorted, says another program", "!_TAG_FILE_SORTED\t1\t//\n" + ManyTags(), made, false},
        {"a head that does not end", Claiming("", "", std::string(100'000, '!')), made, false},
    };
    for (const auto& c : kCases) {
        WriteMade(folder, c.tags, c.made);
        EXPECT_EQ(IsBisected(folder.Tags()), c.believed) << c.why;
    }
}

TEST(TagLines, OnlyCopiesWithTheirTimesAreTrusted)
{
    const TagsFolder folder;
    const std::string tags = Claiming(ManyTags());
    WriteMade(folder, tags, TimeOf(tags));
    const std::string copy = folder.directory / "copy";
    std::filesystem::copy_file(folder.Tags(), copy);
    EXPECT_FALSE(IsBisected(copy)) << "any other file until it has been read";
    const timespec times[] = {TimeOf(tags), TimeOf(tags)};
    ASSERT_EQ(::utimensat(AT_FDCWD, copy.c_str(), times, 0), 0);
    EXPECT_TRUE(IsBisected(copy));
    std::filesystem::rename(folder.Tags(), folder.directory / "renamed");
    EXPECT_TRUE(IsBisected(folder.directory / "renamed"));
}

TEST(TagLines, TheClaimMayStandAnywhereAmongThePseudoTags)
{
    const TagsFolder folder;
    const std::string tags = Claiming(ManyTags(), "!_TAG_A\t1\t//\n", "!_TAG_Z\t1\t//\n!\n");
    WriteMade(folder, tags, TimeOf(tags));
    EXPECT_TRUE(IsBisected(folder.Tags()));
    EXPECT_EQ(Matches(folder.Entry(), "name10000").size(), 1u) << "the first behind them";
    EXPECT_EQ(Matches(folder.Entry(), "name13999").size(), 1u);
}

TEST(TagLines, AFalseClaimIsDetectedWhenASearchMeetsIt)
{
    const TagsFolder folder;
    const std::string tags = Claiming(ManyTags("z") + ManyTags("name") + ManyTags("a"));
    WriteMade(folder, tags, TimeOf(tags));
    EXPECT_EQ(Matches(folder.Entry(), "name12345").size(), 1u) << "a name behind which is a smaller one";
    EXPECT_EQ(Matches(folder.Entry(), "a12345").size(), 1u) << "known to be out of order by now";
    EXPECT_FALSE(IsBisected(folder.Tags()));
}

// Checking a claim must not cost more than a lookup's few reads, so a forged claim can hide names. Its author could
// have left these out as well.
TEST(TagLines, AForgedClaimHidesOnlyNamesOfItsOwnFile)
{
    const TagsFolder folder;
    folder.directory.Write("hidden.h", "int a;\n");
    std::string tags = ManyTags();
    const size_t unseen = tags.find('\n', tags.length() / 3) + 1; // no search looks at this place
    tags.insert(unseen, TagLine("a", "hidden.h", 1, "v"));
    tags = Claiming(tags);
    WriteMade(folder, tags, TimeOf(tags));
    const BEntry local = folder.Entry();
    EXPECT_EQ(Matches(local, "a"), Lines{});
    EXPECT_EQ(Matches(local, "a", TagFile::PartialMatch()), Lines{});
    for (int i = 10'000; i < 14'000; ++i)
        ASSERT_EQ(Matches(local, "name" + std::to_string(i)),
                  Lines{"name" + std::to_string(i) + " f a.cpp:" + std::to_string(i)});
    EXPECT_TRUE(IsBisected(folder.Tags())) << "none of them has met the lie";

    const Lines names = Names(local);
    EXPECT_EQ(names.size(), 4001u);
    EXPECT_EQ(std::count(names.begin(), names.end(), "a"), 1) << "who reads all names believes nothing";
    EXPECT_EQ(Paths(local), (Lines{"a.cpp", "hidden.h"}));

    const TagsFolder other(TagLine("a", "b.h", 1, "v"));
    const BEntry system = other.Entry();
    Tags both(&local, &system, "a", false);
    ASSERT_TRUE(both.Rewind());
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
    bool isSystem = false;
    EXPECT_TRUE(both.NextMatch(name, qualifier, kind, ref, line, isSystem, false, TagFile::ExactMatch()));
    EXPECT_TRUE(isSystem) << "the other file answers as if it were alone";
    both.Done();

    SetTime(folder.Tags(), NewTime());
    EXPECT_EQ(Matches(local, "a"), Lines{"a v hidden.h:1"}) << "any change ends the belief";
}

// A file that is changed without a trace, with its time restored, counts as unchanged.
TEST(TagLines, ARestoredTimeHidesNamesOfItsOwnFile)
{
    const TagsFolder folder;
    const std::string tags = ManyTags();
    const timespec time = {1'234'567'890, 0};
    WriteMade(folder, tags, time);
    ReadAll(folder.Tags());
    ASSERT_TRUE(IsBisected(folder.Tags()));
    std::string changed = tags;
    changed.replace(tags.find('\n', tags.length() / 3) + 1, 9, "anotherOn");
    std::ofstream(folder.Tags(), std::ios::in | std::ios::out) << changed; // the same file with the same size
    const timespec times[] = {time, time};
    ASSERT_EQ(::utimensat(AT_FDCWD, folder.Tags().c_str(), times, 0), 0);
    EXPECT_EQ(Matches(folder.Entry(), "anotherOn"), Lines{});
    const Lines names = Names(folder.Entry());
    EXPECT_EQ(std::count(names.begin(), names.end(), "anotherOn"), 1);
    EXPECT_EQ(Matches(folder.Entry(), "name13999").size(), 1u);
}
