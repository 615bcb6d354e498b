// Readers and writers of one index at the same time.

#include "symbols/store/Store.h"

#include "tests/support/Sources.h"
#include "tests/support/TempDirectory.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

using namespace symbols;

namespace {

constexpr int kFiles = 5;

// Each commit gives all files a symbol with the same line, so a reader that sees two lines has seen half a commit.
void CommitAll(Store& store, unsigned line)
{
    const auto writer = store.Write({"/root", "*.c"}, false, kNeverCancelled);
    ASSERT_TRUE(writer) << writer.Failure().Message();
    for (int i = 0; i < kFiles; i++)
        (*writer)->Put(std::to_string(i) + ".c", {}, SourceOf({SymbolNamed("same", line)}));
    ASSERT_TRUE((*writer)->Commit());
}

void ExpectWhole(const Snapshot& snapshot)
{
    const Symbols symbols = snapshot.ByName("same", {});
    ASSERT_EQ(symbols.found.size(), size_t(kFiles));
    for (const Symbol& symbol : symbols.found)
        ASSERT_EQ(symbol.line, symbols.found.front().line);
    ASSERT_EQ(snapshot.Fuzzy("sm", {}).found.size(), size_t(kFiles));
    ASSERT_EQ(snapshot.Totals().files, std::uint64_t(kFiles));
    ASSERT_FALSE(snapshot.IsDamaged());
}

} // namespace

TEST(Sharing, ReadersSeeOnlyWholeCommitsOfTwoWriters)
{
    const TempDirectory temp;
    const std::string directory = temp / "index";
    Store shared(directory);
    CommitAll(shared, 1);
    std::atomic<int> writing = 2;
    std::vector<std::jthread> threads;
    for (unsigned number = 0; number < 2; number++)
        threads.emplace_back([&, number] {
            Store store(directory, {size_t(1) << 20, 2, 1 << 20});
            for (unsigned i = 0; i < 30; i++)
                CommitAll(store, 2 + i * 2 + number);
            writing--;
        });
    for (int number = 0; number < 4; number++)
        threads.emplace_back([&, number] {
            Store own(directory);
            const Store& store = number % 2 == 0 ? own : shared;
            while (writing > 0) {
                const SnapshotPointer snapshot = store.Current();
                ASSERT_NE(snapshot, nullptr);
                ExpectWhole(*snapshot);
            }
        });
    threads.clear();
    ExpectWhole(*shared.Current());
}

TEST(Sharing, ManyThreadsAskOneSnapshot)
{
    const TempDirectory temp;
    Store store(temp / "index");
    CommitAll(store, 1);
    const SnapshotPointer snapshot = Combined(Store(temp / "index").Current(), store.Current(), "/system", {});
    std::vector<std::jthread> threads;
    for (int number = 0; number < 4; number++)
        threads.emplace_back([&] {
            for (int i = 0; i < 50; i++) {
                const Symbols symbols = snapshot->ByName("same", {});
                ASSERT_EQ(symbols.found.size(), size_t(kFiles) * 2);
                ASSERT_EQ(snapshot->FileOf(symbols.found.back().file).path, "/system/4.c");
            }
        });
}
