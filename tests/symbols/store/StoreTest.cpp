#include "symbols/store/Store.h"

#include "tests/support/Sources.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

using namespace symbols;

namespace {

const base::CancelToken kNever;

class StoreTest : public testing::Test {
protected:
    std::unique_ptr<Store::Writer> Writer(Store& of, bool fromNothing = false)
    {
        auto writer = of.Write({"/root", "*.c"}, fromNothing, kNever);
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
