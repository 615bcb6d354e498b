// Damaged tags files: each has a defined result, and no other tags are lost.

#include "tags/TagFile.h"

#include "tests/support/OrdinaryRights.h"
#include "tests/tags/TagsFolder.h"

#include <fstream>
#include <unistd.h>

using namespace std::string_literals;

namespace {

BEntry Fixture(const char* name)
{
    return BEntry((TEST_DATA "/tags/" + std::string(name)).c_str());
}

// The matches in all lines of a file, with or without their scopes.
Lines All(const BEntry& tags)
{
    return Matches(tags, "", TagFile::AnyMatch());
}

// A valid line of exactly 'length' bytes, including the newline; its last field is padded.
std::string LineOfLength(size_t length)
{
    const std::string start = "Foo\ta.cpp\t12;\"\tf\tclass:";
    return start + std::string(length - start.length() - 1, 'x') + "\n";
}

constexpr char kFoo[] = "Foo f a.cpp:12";

} // namespace

TEST(TagFileBadInput, OddFilesYieldTheirGoodLines)
{
    const struct {
        const char* file;
        const char* why;
        Lines tags;
        Lines names;
    } kCases[] = {
        {"empty.tags", "nothing in it", {}, {}},
        {"only-pseudo-tags.tags", "nothing but pseudo-tags", {}, {}},
        {"no-newline-at-end.tags", "the last line counts", {"Bar::Foo f a.cpp:12", "Goo f b.h:3"}, {"Bar::Foo", "Goo"}},
        {"crlf-line-ends.tags",
         "the carriage return is the end of what is last",
         {"Bar\r::Foo f a.cpp:12", "Goo f b.h:3"},
         {"Bar\r::Foo", "Goo"}},
        {"search-patterns-for-lines.tags", "lines are found by number or not at all", {}, {}},
        {"bytes-from-0x80.tags",
         "bytes are bytes, whatever their encoding",
         {"T\xc3\xa4st::gr\xc3\xb6\xc3\x9f"
          "e f a.cpp:1",
          "latin\xe4 f b.h:2", "\xff\xfe f a.cpp:3"},
         {"T\xc3\xa4st::gr\xc3\xb6\xc3\x9f"
          "e",
          "latin\xe4", "\xff\xfe"}},
        {"sources-gone.tags", "a missing source does not hide the next", {"Foo f b.h:2"}, {"Foo", "Foo", "Foo"}},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(All(Fixture(c.file)), c.tags) << c.file << ": " << c.why;
        EXPECT_EQ(Names(Fixture(c.file)), c.names) << c.file << ": " << c.why;
    }
}

TEST(TagFileBadInput, AnUnsortedFileIsSearchedToItsEnd)
{
    const BEntry tags = Fixture("sorted-header-unsorted-lines.tags");
    EXPECT_EQ(Matches(tags, "Foo"), (Lines{"Foo f a.cpp:12", "Foo f a.cpp:13"}));
    EXPECT_EQ(Matches(tags, "Foo", TagFile::ExactMatch(), true), Lines{}) << "unless it is to stop at a mismatch";
}

TEST(TagFileBadInput, FindsNonAsciiNames)
{
    EXPECT_EQ(Matches(Fixture("bytes-from-0x80.tags"), "gr\xc3\xb6", TagFile::PartialMatch()).size(), 1u);
    EXPECT_EQ(Matches(Fixture("bytes-from-0x80.tags"), "\xff\xfe"), (Lines{"\xff\xfe f a.cpp:3"}));
}

TEST(TagFileBadInput, NonFilesCannotBeOpenedOrAreEmpty)
{
    const TempDirectory directory;
    EXPECT_FALSE(TagFile(nullptr, "Foo", false).Rewind());
    const BEntry unset;
    EXPECT_FALSE(TagFile(&unset, "Foo", false).Rewind());
    EXPECT_EQ(All(BEntry((directory / "tags").c_str())), Lines{"(cannot be opened)"});

    // A directory can be opened, but has no lines.
    std::filesystem::create_directory(directory / "tags");
    const BEntry folder((directory / "tags").c_str());
    EXPECT_EQ(All(folder), Lines{});
    EXPECT_EQ(Names(folder), Lines{});
    EXPECT_EQ(Paths(folder), Lines{});
}

// An unpacked archive may contain any of these.
TEST(TagFileBadInput, PipesAndDevicesHaveNoLinesAndAreNotWaitedFor)
{
    const TempDirectory directory;
    ASSERT_EQ(::mkfifo((directory / "pipe").c_str(), 0600), 0);
    for (const char* device : {"/dev/null", "/dev/zero", "/dev/full", "/dev/tty"})
        std::filesystem::create_symlink(device, directory / std::filesystem::path(device).filename().string());
    for (const auto& entry : std::filesystem::directory_iterator(directory.Path())) {
        const BEntry tags(entry.path().c_str(), true);
        EXPECT_EQ(All(tags), Lines{}) << entry.path();
        EXPECT_EQ(Names(tags), Lines{}) << entry.path();
        EXPECT_EQ(Paths(tags), Lines{}) << entry.path();
    }
}

TEST(TagFileBadInput, AnUnreadableFileCannotBeOpened)
{
    const TagsFolder folder(LineOfLength(100));
    std::filesystem::permissions(folder.Tags(), std::filesystem::perms::none);
    const OrdinaryRights rights;
    EXPECT_EQ(All(folder.Entry()), Lines{"(cannot be opened)"});
}

TEST(TagFileBadInput, AClosedFileHasNoLines)
{
    const TagsFolder folder(LineOfLength(100));
    const BEntry tags = folder.Entry();
    TagFile file(&tags, "", false);
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
    EXPECT_FALSE(file.Next(name, qualifier));
    EXPECT_FALSE(file.NextMatch(name, qualifier, kind, ref, line, false, TagFile::AnyMatch()));
    std::vector<char*> paths;
    file.LoadPathCache(paths);
    EXPECT_TRUE(paths.empty());
}

TEST(TagFileBadInput, LongLinesAreReadInPiecesOf1023Bytes)
{
    const std::string next = "Goo\tb.h\t3;\"\tf\n";
    const struct {
        const char* why;
        size_t length;
        size_t scope; // bytes of it in the first piece
    } kCases[] = {
        {"1,022 bytes: well within the buffer", 1022, 998},
        {"1,023 bytes: just fits, newline and all", 1023, 999},
        {"1,024 bytes: all but the newline fits", 1024, 1000},
        {"1,025 bytes: one character goes into the next piece", 1025, 1000},
        {"1,500 bytes", 1500, 1000},
        {"5,000 bytes", 5000, 1000},
    };
    for (const auto& c : kCases) {
        const std::string line = LineOfLength(c.length);
        ASSERT_EQ(line.length(), c.length);
        const TagsFolder folder(line + next);
        const Lines found = All(folder.Entry());
        ASSERT_EQ(found.size(), 2u) << c.why;
        EXPECT_EQ(found[0].find("::"), c.scope) << c.why;
        EXPECT_TRUE(found[0].ends_with("xx::" + std::string(kFoo))) << c.why;
        EXPECT_EQ(found[1], "Goo f b.h:3") << c.why;
    }
}

TEST(TagFileBadInput, AFurtherPieceOfALineIsALineItself)
{
    // The first piece ends with a 'z', and the second looks like a tag.
    const std::string start = "Foo\ta.cpp\t12;\"\tf\tclass:";
    const std::string longLine = start + std::string(1023 - start.length(), 'z') + "Tail\tb.h\t7;\"\tf\n";
    const std::string last = TagLine("Foo", "a.cpp", 13, "f");
    const TagsFolder folder(longLine + last);
    EXPECT_EQ(Matches(folder.Entry(), "Tail"), Lines{"Tail f b.h:7"});
    EXPECT_EQ(Matches(folder.Entry(), "Foo").size(), 2u);
    EXPECT_EQ(Matches(folder.Entry(), "Foo", TagFile::ExactMatch(), true).size(), 1u)
        << "a further piece has another name, and ends a search that stops at a mismatch";
}

TEST(TagFileBadInput, AFurtherPieceMayCountAsAPseudoTag)
{
    const std::string start = "Foo\ta.cpp\t12;\"\tf\tclass:";
    const std::string longLine = start + std::string(1023 - start.length(), 'z') + "!Tail\tb.h\t7;\"\tf\n";
    const TagsFolder folder(longLine + TagLine("Foo", "a.cpp", 13, "f"));
    EXPECT_EQ(Matches(folder.Entry(), "Foo", TagFile::ExactMatch(), true).size(), 2u);
}

TEST(TagFileBadInput, ANulByteEndsItsLine)
{
    const std::string good = TagLine("Goo", "b.h", 3, "f");
    const struct {
        const char* why;
        std::string line;
        Lines found;
    } kCases[] = {
        {"in the name", "Fo\0o\ta.cpp\t1;\"\tf\n"s, {"Goo f b.h:3"}},
        {"at the beginning", "\0Foo\ta.cpp\t1;\"\tf\n"s, {"Goo f b.h:3"}},
        {"in the scope", "Foo\ta.cpp\t1;\"\tf\tclass:A\0B\n"s, {"A::Foo f a.cpp:1", "Goo f b.h:3"}},
        {"after the kind", "Foo\ta.cpp\t1;\"\tf\0\tclass:A\n"s, {"Foo f a.cpp:1", "Goo f b.h:3"}},
        {"many", std::string(3000, '\0') + "\n", {"Goo f b.h:3"}},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(All(TagsFolder(c.line + good).Entry()), c.found) << c.why;
}

TEST(TagFileBadInput, ABinaryFileIsSkipped)
{
    // Random bytes, the same every time, then a tag on a separate line.
    std::string bytes;
    unsigned state = 12345;
    for (int i = 0; i < 200'000; ++i) {
        state = state * 1664525 + 1013904223;
        bytes += static_cast<char>(state >> 24);
    }
    const TagsFolder folder(bytes + "\n" + TagLine("Foo", "a.cpp", 12, "f"));
    EXPECT_EQ(Matches(folder.Entry(), "Foo"), Lines{kFoo});
    const Lines all = All(folder.Entry());
    ASSERT_FALSE(all.empty());
    EXPECT_EQ(all.back(), kFoo);
    EXPECT_EQ(Names(folder.Entry()).back(), "Foo");
    EXPECT_FALSE(Paths(folder.Entry()).empty());
}

namespace {

// A file too large for one read, so that a change during reading takes effect.
class ChangedWhileRead : public testing::Test {
protected:
    void SetUp() override
    {
        std::string tags;
        for (int line = 1; line <= kTags; ++line)
            tags += TagLine("Foo", "a.cpp", line, "f");
        folder.WriteTags(tags);
        ASSERT_TRUE(file.Rewind());
        ASSERT_TRUE(Next());
    }
    void TearDown() override { file.Done(); }

    bool Next() { return file.NextMatch(name, qualifier, kind, ref, line, false, TagFile::ExactMatch()); }
    int CountRest()
    {
        int count = 0;
        for (; Next(); ++count)
            EXPECT_EQ(line, count + 2);
        return count;
    }

    static constexpr int kTags = 20'000;
    TagsFolder folder;
    BEntry tags = folder.Entry();
    TagFile file{&tags, "Foo", true};
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
};

} // namespace

TEST_F(ChangedWhileRead, AFileThatVanishesIsReadToItsEnd)
{
    std::filesystem::remove(folder.Tags());
    EXPECT_EQ(CountRest(), kTags - 1);
}

TEST_F(ChangedWhileRead, AShrinkingFileEndsEarlier)
{
    std::filesystem::resize_file(folder.Tags(), 0);
    EXPECT_LT(CountRest(), kTags - 1);
    EXPECT_FALSE(Next());
}

TEST_F(ChangedWhileRead, VanishedSourcesAreSkipped)
{
    std::filesystem::remove(folder.directory / "a.cpp");
    EXPECT_FALSE(Next());
}
