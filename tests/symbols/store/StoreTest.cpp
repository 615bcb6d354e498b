#include "symbols/store/Store.h"

#include "tests/support/FileContent.h"
#include "tests/support/Sources.h"
#include "tests/support/TempDirectory.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

using namespace symbols;

namespace {

class StoreTest : public testing::Test {
protected:
    std::unique_ptr<Store::Writer> Writer(Store& of, bool fromNothing = false)
    {
        auto writer = of.Write({"/root", "*.c"}, fromNothing, kNeverCancelled);
        EXPECT_TRUE(writer) << writer.Failure().Message();
        return std::move(*writer);
    }

    void Put(const std::string& path, std::string_view name)
    {
        const auto writer = Writer(store);
        writer->Put(path, {1, 2, 3}, SourceOf({SymbolNamed(name, 7)}));
        ASSERT_TRUE(writer->Commit());
    }

    static std::vector<std::string> Places(const SnapshotPointer& snapshot, const Symbols& symbols)
    {
        std::vector<std::string> places;
        for (const Symbol& symbol : symbols.found)
            places.push_back(std::string(snapshot->FileOf(symbol.file).path) + ":" + std::to_string(symbol.line));
        return places;
    }
    static std::vector<std::string> Places(const SnapshotPointer& snapshot, std::string_view name)
    {
        return Places(snapshot, snapshot->ByName(name, {}));
    }

    TempDirectory temp;
    Store store{temp / "cache/index"};
};

using Lines = std::vector<std::string>;

size_t SegmentsIn(const std::string& directory)
{
    const Lines names = NamesIn(directory);
    return static_cast<size_t>(std::ranges::count_if(names, [](auto& name) { return name.ends_with(".segment"); }));
}

} // namespace

TEST_F(StoreTest, IsEmptyBeforeTheFirstCommit)
{
    EXPECT_EQ(store.Current(), nullptr);
    EXPECT_FALSE(store.Header());
    EXPECT_FALSE(std::filesystem::exists(temp / "cache"));
}

TEST_F(StoreTest, AnotherStoreFindsWhatWasCommitted)
{
    Put("b.c", "find");
    Put("a.c", "find");
    const SnapshotPointer snapshot = Store(temp / "cache/index").Current();
    ASSERT_NE(snapshot, nullptr);
    EXPECT_EQ(Places(snapshot, "find"), (Lines{"a.c:7", "b.c:7"}));
    EXPECT_EQ(Places(snapshot, "fin"), Lines());
    EXPECT_EQ(snapshot->Totals().files, 2u);
    EXPECT_EQ(snapshot->Totals().symbols, 2u);
    EXPECT_FALSE(snapshot->IsDamaged());
}

TEST_F(StoreTest, ALaterPutReplacesTheFile)
{
    Put("a.c", "old");
    const SnapshotPointer before = store.Current();
    Put("a.c", "young");
    EXPECT_EQ(Places(store.Current(), "old"), Lines());
    EXPECT_EQ(Places(store.Current(), "young"), (Lines{"a.c:7"}));
    EXPECT_EQ(Places(before, "old"), (Lines{"a.c:7"}));
}

TEST_F(StoreTest, RemembersOnWhichFilesCtagsFailed)
{
    auto writer = Writer(store);
    tagging::ParsedSource failed = SourceOf({});
    failed.isIncomplete = true;
    writer->Put("a.c", {1, 2, 3}, failed);
    writer->Put("b.c", {1, 2, 3}, SourceOf({}));
    ASSERT_TRUE(writer->Commit());
    writer.reset();              // the next one would wait for it
    for (int i = 0; i < 40; ++i) // merges the segments
        Put("c.c", "find" + std::to_string(i));
    EXPECT_LT(SegmentsIn(temp / "cache/index"), 40u);
    const SnapshotPointer snapshot = store.Current();
    EXPECT_TRUE(snapshot->FileOf(*snapshot->FindFile("a.c")).isIncomplete);
    EXPECT_FALSE(snapshot->FileOf(*snapshot->FindFile("b.c")).isIncomplete);
    EXPECT_FALSE(snapshot->FileOf(*snapshot->FindFile("c.c")).isIncomplete);
}

TEST_F(StoreTest, ASnapshotKeepsItsAnswersWhenTheIndexIsRemoved)
{
    Put("a.c", "find");
    const SnapshotPointer before = store.Current();
    ASSERT_TRUE(store.Remove());
    EXPECT_FALSE(std::filesystem::exists(temp / "cache/index"));
    EXPECT_EQ(store.Current(), nullptr);
    EXPECT_EQ(Places(before, "find"), (Lines{"a.c:7"}));
    EXPECT_TRUE(store.Remove());
    Put("b.c", "find");
    EXPECT_EQ(Places(store.Current(), "find"), (Lines{"b.c:7"}));
}

TEST_F(StoreTest, KeepsItsSnapshotUntilSomethingIsCommitted)
{
    Put("a.c", "find");
    const SnapshotPointer snapshot = store.Current();
    EXPECT_EQ(store.Current(), snapshot);
    ASSERT_TRUE(Writer(store)->Commit()); // without changes
    EXPECT_EQ(store.Current(), snapshot);
    ASSERT_TRUE(Writer(store)->Commit());
    Store other(temp / "cache/index");
    const auto writer = Writer(other);
    writer->Touch("a.c", {5, 6, 7});
    EXPECT_EQ(store.Current(), snapshot);
    ASSERT_TRUE(writer->Commit());
    const SnapshotPointer touched = store.Current();
    EXPECT_NE(touched, snapshot);
    EXPECT_EQ(touched->FileOf(*touched->FindFile("a.c")).stamp, (tagging::FileStamp{5, 6, 7}));
    EXPECT_EQ(snapshot->FileOf(*snapshot->FindFile("a.c")).stamp, (tagging::FileStamp{1, 2, 3}));
}

TEST_F(StoreTest, AWriterThatIsDroppedLeavesNoTrace)
{
    Put("a.c", "find");
    const Lines before = NamesIn(temp / "cache/index");
    {
        Store other(temp / "cache/index", {1, 8, 1 << 20}); // each file becomes a segment at once
        const auto writer = Writer(other);
        writer->Put("b.c", {}, SourceOf({SymbolNamed("find", 1)}));
        writer->Remove("a.c");
        EXPECT_EQ(SegmentsIn(temp / "cache/index"), 2u);
    }
    EXPECT_THAT(NamesIn(temp / "cache/index"), testing::UnorderedElementsAreArray(before));
    EXPECT_EQ(Places(store.Current(), "find"), (Lines{"a.c:7"}));
}

TEST_F(StoreTest, AWriterRemovesWhatAKilledOneLeft)
{
    Put("a.c", "find");
    const Lines before = NamesIn(temp / "cache/index");
    for (const char* const name : {"new-abcdef", "0123456789abcdef.segment"})
        temp.Write(std::string("cache/index/") + name, "half a segment");
    temp.Write("cache/index/note", "of somebody else");
    EXPECT_EQ(Places(Store(temp / "cache/index").Current(), "find"), (Lines{"a.c:7"}));
    Put("a.c", "found");
    EXPECT_EQ(NamesIn(temp / "cache/index").size(), before.size() + 1);
    EXPECT_TRUE(std::filesystem::exists(temp / "cache/index/note"));
}

TEST_F(StoreTest, AnotherWriterWaitsUntilItIsCancelled)
{
    const auto writer = Writer(store);
    base::CancelToken cancel;
    std::jthread canceller([&] { cancel.Cancel(); });
    const auto other = Store(temp / "cache/index").Write({"/root", "*.c"}, false, cancel);
    ASSERT_FALSE(other);
    EXPECT_THAT(other.Failure().Message(), testing::HasSubstr("cancelled"));
    EXPECT_FALSE(store.Remove());
}

TEST_F(StoreTest, StartsFromNothingWhenItIsAsked)
{
    Put("a.c", "find");
    const auto writer = Writer(store, true);
    writer->Put("b.c", {}, SourceOf({SymbolNamed("find", 1)}));
    EXPECT_EQ(Places(store.Current(), "find"), (Lines{"a.c:7"}));
    ASSERT_TRUE(writer->Commit());
    EXPECT_EQ(Places(store.Current(), "find"), (Lines{"b.c:1"}));
    EXPECT_EQ(SegmentsIn(temp / "cache/index"), 1u);
}

TEST_F(StoreTest, RemembersItsHeader)
{
    Put("a.c", "find");
    EXPECT_EQ(Store(temp / "cache/index").Header(), (StoreHeader{"/root", "*.c"}));
    ASSERT_TRUE((*store.Write({"/root", "*.h"}, false, kNeverCancelled))->Commit());
    EXPECT_EQ(Store(temp / "cache/index").Header(), (StoreHeader{"/root", "*.h"}));
    EXPECT_EQ(Places(store.Current(), "find"), (Lines{"a.c:7"}));
}

TEST_F(StoreTest, IsReadableForItsUserOnly)
{
    std::filesystem::create_directories(temp / "cache/index");
    Put("a.c", "find");
    EXPECT_EQ(std::filesystem::status(temp / "cache/index").permissions(), std::filesystem::perms(0700));
    for (const auto& entry : std::filesystem::directory_iterator(temp / "cache/index"))
        EXPECT_EQ(entry.status().permissions(), std::filesystem::perms(0600)) << entry.path();
}

TEST_F(StoreTest, FailsWhereADirectoryCannotBeMade)
{
    temp.Write("file", "");
    const auto writer = Store(temp / "file/index").Write({"/root", "*.c"}, false, kNeverCancelled);
    ASSERT_FALSE(writer);
    EXPECT_THAT(writer.Failure().Message(), testing::HasSubstr("file/index"));
    EXPECT_EQ(Store(temp / "file/index").Current(), nullptr);
}

TEST_F(StoreTest, HoldsFewSegmentsAfterManyCommits)
{
    for (int i = 0; i < 60; i++)
        Put(std::to_string(i) + ".c", "find");
    EXPECT_LT(SegmentsIn(temp / "cache/index"), 20u);
    EXPECT_EQ(Places(store.Current(), "find").size(), 60u);
    for (int i = 0; i < 60; i++)
        Put("0.c", "found");
    EXPECT_LT(SegmentsIn(temp / "cache/index"), 20u);
    EXPECT_EQ(Places(store.Current(), "find").size(), 59u);
}

// Several threads write so many names.
TEST_F(StoreTest, HoldsManyNames)
{
    tagging::ParsedSource source;
    constexpr unsigned kNames = 60'000;
    for (unsigned i = 0; i < kNames; i++) {
        const std::string_view name = source.texts.Put((i % 2 == 0 ? "Name" : "name") + std::to_string(i));
        source.symbols.push_back(SymbolNamed(name, i + 1));
        source.names.push_back(name);
    }
    const auto writer = Writer(store);
    writer->Put("a.c", {1, 2, 3}, source);
    ASSERT_TRUE(writer->Commit());
    const SnapshotPointer snapshot = store.Current();
    for (const unsigned i : {0u, 1u, 4'321u, kNames - 1}) {
        const std::string name = (i % 2 == 0 ? "Name" : "name") + std::to_string(i);
        EXPECT_EQ(Places(snapshot, name), Lines{"a.c:" + std::to_string(i + 1)});
        ASSERT_FALSE(snapshot->Fuzzy(name, {}).found.empty());
        EXPECT_EQ(snapshot->Fuzzy(name, {}).found[0].symbol.name, name);
    }
    EXPECT_EQ(Places(snapshot, snapshot->ByPrefix("name5999", {})).size(), 11u);
    EXPECT_EQ(snapshot->Totals().symbols, kNames);
    EXPECT_FALSE(snapshot->IsDamaged());
}

TEST_F(StoreTest, FindsNamesByTheirBeginning)
{
    const auto writer = Writer(store);
    writer->Put("a.c", {},
                SourceOf({SymbolNamed("abc", 1), SymbolNamed("ABD", 2), SymbolNamed("Abb", 3), SymbolNamed("ab", 4),
                          SymbolNamed("b", 5)}));
    ASSERT_TRUE(writer->Commit());
    const auto names = [&](std::string_view prefix, size_t limit) {
        const Symbols symbols = store.Current()->ByPrefix(prefix, {limit});
        Lines found;
        for (const Symbol& symbol : symbols.found)
            found.push_back(std::string(symbol.name));
        if (symbols.more)
            found.push_back("...");
        return found;
    };
    EXPECT_EQ(names("ab", 9), (Lines{"ab", "Abb", "abc", "ABD"}));
    EXPECT_EQ(names("ab", 2), (Lines{"ab", "Abb", "..."}));
    EXPECT_EQ(names("A", 9), (Lines{"ABD", "Abb"}));
    EXPECT_EQ(names("", 9).size(), 5u);
    EXPECT_EQ(names("c", 9), Lines());
}

TEST_F(StoreTest, StopsWhenItIsCancelled)
{
    const auto writer = Writer(store);
    std::vector<std::string> names;
    for (int i = 0; i < 5000; i++)
        names.push_back("name" + std::to_string(i));
    std::vector<tagging::Symbol> symbols;
    for (const std::string& name : names) {
        symbols.push_back(SymbolNamed(name, 1));
        symbols.push_back(SymbolNamed("same", 1));
    }
    writer->Put("a.c", {}, SourceOf(symbols));
    ASSERT_TRUE(writer->Commit());
    base::CancelToken cancel;
    cancel.Cancel();
    const SnapshotPointer snapshot = store.Current();
    const Limits limits = {SIZE_MAX, &cancel};
    for (const Symbols& found : {snapshot->ByName("same", limits), snapshot->ByPrefix("n", limits)}) {
        EXPECT_TRUE(found.more);
        EXPECT_LT(found.found.size(), 2000u);
    }
    const FuzzyMatches matches = snapshot->Fuzzy("nm", limits);
    EXPECT_TRUE(matches.more);
    EXPECT_LT(matches.found.size(), 2000u);
}

TEST_F(StoreTest, FuzzyFindsWordStartsBeforeOthers)
{
    const auto writer = Writer(store);
    writer->Put("a.c", {},
                SourceOf({SymbolNamed("get_device", 1), SymbolNamed("gadget", 2), SymbolNamed("gd", 3),
                          SymbolNamed("gdb_open", 4), SymbolNamed("big_debt", 5), SymbolNamed("other", 6)}));
    ASSERT_TRUE(writer->Commit());
    Lines names;
    for (const FuzzyMatch& match : store.Current()->Fuzzy("gd", {}).found)
        names.push_back(std::string(match.symbol.name));
    EXPECT_EQ(names, (Lines{"gd", "gdb_open", "get_device", "gadget", "big_debt"}));
}

TEST_F(StoreTest, FuzzySearchIsNarrowedByScopeAndByPath)
{
    tagging::Symbol inner = SymbolNamed("name", 1);
    inner.scope = "Outer::Inner";
    tagging::Symbol other = SymbolNamed("name", 2);
    other.scope = "Other";
    const auto writer = Writer(store);
    writer->Put("lib/a.c", {}, SourceOf({inner, other, SymbolNamed("name", 3)}));
    writer->Put("b.c", {}, SourceOf({SymbolNamed("game", 4), SymbolNamed("name", 5)}));
    ASSERT_TRUE(writer->Commit());
    const auto lines = [&](std::string_view pattern) {
        std::vector<unsigned> found;
        for (const FuzzyMatch& match : store.Current()->Fuzzy(pattern, {}).found)
            found.push_back(match.symbol.line);
        return found;
    };
    EXPECT_THAT(lines("na"), testing::ElementsAre(5, 1, 2, 3));
    EXPECT_THAT(lines("Outer::na"), testing::ElementsAre(1));
    EXPECT_THAT(lines("inner::na"), testing::ElementsAre(1));
    EXPECT_THAT(lines("lib/na"), testing::ElementsAre(1, 2, 3));
    EXPECT_THAT(lines("b/ae"), testing::ElementsAre(4, 5, 1, 2, 3));
    EXPECT_THAT(lines("Outer::"), testing::ElementsAre(1));
    EXPECT_THAT(lines(""), testing::ElementsAre());
}

TEST_F(StoreTest, APartIsSeenOnlyByTheNextWriterFromNothing)
{
    {
        const auto writer = Writer(store, true);
        writer->Put("a.c", {1, 2, 3}, SourceOf({SymbolNamed("early", 7)}));
        ASSERT_TRUE(writer->CommitPart());
    }
    Store other(temp / "cache/index");
    EXPECT_EQ(other.Current(), nullptr);
    EXPECT_FALSE(other.Header());
    const auto writer = Writer(other, true);
    ASSERT_NE(other.Part({"/root", "*.c"}), nullptr);
    EXPECT_EQ(Places(other.Part({"/root", "*.c"}), "early"), Lines{"a.c:7"});
    writer->Put("b.c", {1, 2, 3}, SourceOf({SymbolNamed("late", 8)}));
    ASSERT_TRUE(writer->Commit());
    EXPECT_EQ(Places(store.Current(), "early"), Lines{"a.c:7"});
    EXPECT_EQ(Places(store.Current(), "late"), Lines{"b.c:8"});
    EXPECT_EQ(store.Part({"/root", "*.c"}), nullptr);
}

TEST_F(StoreTest, APartForAnotherHeaderIsLeftOut)
{
    {
        const auto writer = Writer(store, true);
        writer->Put("a.c", {1, 2, 3}, SourceOf({SymbolNamed("early", 7)}));
        ASSERT_TRUE(writer->CommitPart());
    }
    auto writer = store.Write({"/root", "*.h"}, true, kNeverCancelled);
    ASSERT_TRUE(writer);
    EXPECT_EQ(store.Part({"/root", "*.h"}), nullptr);
    ASSERT_TRUE((*writer)->Commit());
    writer->reset();
    EXPECT_EQ(store.Current()->Totals().files, 0u);
    EXPECT_EQ(SegmentsIn(temp / "cache/index"), 0u);
}

TEST_F(StoreTest, APartDoesNotReplaceACompleteState)
{
    Put("a.c", "complete");
    {
        const auto writer = Writer(store, true);
        writer->Put("b.c", {1, 2, 3}, SourceOf({SymbolNamed("part", 7)}));
        ASSERT_TRUE(writer->CommitPart());
    }
    EXPECT_EQ(Places(store.Current(), "complete"), Lines{"a.c:7"});
    EXPECT_EQ(store.Part({"/root", "*.c"}), nullptr);
    EXPECT_EQ(SegmentsIn(temp / "cache/index"), 1u);
}

TEST_F(StoreTest, ADamagedPartIsNotContinued)
{
    const std::string directory = temp / "cache/index";
    {
        const auto writer = Writer(store, true);
        writer->Put("a.c", {1, 2, 3}, SourceOf({SymbolNamed("early", 7)}));
        ASSERT_TRUE(writer->CommitPart());
    }
    for (const std::string& name : NamesIn(directory))
        if (name.ends_with(".segment"))
            std::filesystem::resize_file(directory + "/" + name, 100);
    Store other(directory);
    const auto writer = Writer(other, true);
    EXPECT_EQ(other.Part({"/root", "*.c"}), nullptr);
    writer->Put("b.c", {1, 2, 3}, SourceOf({SymbolNamed("late", 8)}));
    ASSERT_TRUE(writer->Commit());
    EXPECT_EQ(other.Current()->Totals().files, 1u);
}
