// Several writers and readers of one store.
#include "tests/support/RunProgram.h"
#include "tests/symbols/robust/Generations.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

constexpr int kReaders = 10;
constexpr unsigned kLast = 60;

TEST(IndexWriters, TwoWritersAndTenReadersOnThreadsSeeWholeStates)
{
    const TempDirectory directory;
    EXPECT_EQ(ShareStoreBetweenThreads(directory / "store", kReaders, kLast), "");
}

TEST(IndexWriters, TwoWritersAndTenReadersAsProcessesSeeWholeStates)
{
    const TempDirectory directory;
    const std::string place = directory / "store";
    const std::string last = std::to_string(kLast);
    std::vector<std::unique_ptr<RunningProgram>> programs;
    const auto start = [&](std::vector<std::string> words) {
        words.insert(words.begin(), INDEX_WORKER);
        programs.push_back(std::make_unique<RunningProgram>(words, directory.Path()));
    };
    for (const char* name : {"one", "other"})
        start({"write", place, name, last});
    for (int reader = 0; reader < kReaders; ++reader)
        start({"read", place, "one", "other", last});
    for (const auto& program : programs) {
        const ProgramRun run = program->Wait();
        EXPECT_EQ(run.status, 0) << run.output << run.errors;
    }
}

TEST(IndexWriters, AReaderKeepsItsStateWhileOthersWrite)
{
    const TempDirectory directory;
    symbols::Store store(directory / "store");
    ASSERT_EQ(WriteGenerations(store, "one", 3), "");
    const symbols::SnapshotPointer before = store.Current();
    ASSERT_NE(before, nullptr);
    ASSERT_EQ(WriteGenerations(store, "one", 80), "");
    std::string error;
    EXPECT_EQ(GenerationIn(*before, "one", error), 3u);
    EXPECT_EQ(error, "");
    EXPECT_EQ(GenerationIn(*store.Current(), "one", error), 80u);
    EXPECT_EQ(error, "");
}

} // namespace
