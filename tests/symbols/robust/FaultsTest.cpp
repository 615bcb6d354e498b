// Kills and full disks at each change of a file that an update makes.
#include "tests/support/SupervisedRun.h"
#include "tests/symbols/robust/Indexes.h"
#include "tests/symbols/robust/RandomKills.h"
#include "tests/symbols/robust/SourceTree.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

// A tree with an index in a cache of its own, and a changed tree for which the index has to be updated.
class IndexFaults : public testing::Test {
protected:
    std::string Fresh() const { return FreshAnswers(tree.Root(), SourceTree::Words()); }

    std::string AnswersIn(const std::string& cache) const
    {
        const symbols::Index index(OptionsFor(tree.Root(), cache));
        return AnswersOf::Of(index.Current(), SourceTree::Words());
    }
    std::string AnswersAfterUpdateOf(const std::string& cache) const
    {
        symbols::Index index(OptionsFor(tree.Root(), cache));
        const std::string error = UpdateError(index);
        return error.empty() ? AnswersOf::Of(index.Current(), SourceTree::Words()) : error;
    }

    // Runs an update in a copy of the cache. Returns the number of changes of files that it began.
    size_t Update(const std::string& cache, size_t place, Verdict verdict)
    {
        fs::remove_all(cache);
        fs::copy(prepared, cache, fs::copy_options::recursive);
        size_t changes = 0;
        run = RunSupervised({INDEX_WORKER, "update", tree.Root(), cache}, cache, [&](const FileChange& change) {
            changes = change.number + 1;
            const bool isDue = verdict == Verdict::Kill ? change.number == place : change.number >= place;
            return isDue && (change.needsSpace || verdict == Verdict::Kill) ? verdict : Verdict::Allow;
        });
        return changes;
    }

    void MakeIndex() const
    {
        symbols::Index index(OptionsFor(tree.Root(), prepared));
        ASSERT_EQ(UpdateError(index), "");
    }
    void ChangeTree()
    {
        for (int step = 0; step < 12; ++step)
            tree.Step();
        tree.Restore();
    }

    // Each place at which an update can be killed: the state is the old one or the new one, and the next update ends
    // with the new one.
    void ExpectKillsAreHarmless(const std::string& before)
    {
        const std::string after = Fresh();
        const std::string cache = directory / "killed";
        size_t kills = 0;
        for (size_t place = 0;; ++place) {
            Update(cache, place, Verdict::Kill);
            if (!run)
                GTEST_SKIP() << "this system lets nobody supervise calls";
            if (run->signal == 0)
                break;
            ++kills;
            const std::string left = AnswersIn(cache);
            EXPECT_TRUE(left == before || left == after) << "killed at change " << place << "\n"
                                                         << AnswersOf::Difference(left, after);
            ASSERT_EQ(AnswersOf::Difference(AnswersAfterUpdateOf(cache), after), "") << "killed at change " << place;
        }
        EXPECT_GT(kills, 3u);
        EXPECT_EQ(run->status, 0) << run->output << run->errors;
    }

    // Each place from which on the disk can be full.
    void ExpectFullDisksAreHarmless(const std::string& before)
    {
        const std::string after = Fresh();
        const std::string cache = directory / "full";
        size_t refused = 0;
        for (size_t place = 0;; ++place, ++refused) {
            if (Update(cache, place, Verdict::NoSpace) <= place)
                break;
            if (!run)
                GTEST_SKIP() << "this system lets nobody supervise calls";
            EXPECT_EQ(run->signal, 0) << "refused from change " << place << " on";
            const std::string left = AnswersIn(cache);
            EXPECT_TRUE(left == before || left == after) << "refused from change " << place << " on\n"
                                                         << AnswersOf::Difference(left, after);
            ASSERT_EQ(AnswersOf::Difference(AnswersAfterUpdateOf(cache), after), "") << "refused at change " << place;
        }
        EXPECT_GT(refused, 3u);
    }

    const TempDirectory directory;
    const std::string prepared = directory / "prepared";
    SourceTree tree{7, 25, false};
    std::optional<ProgramRun> run;
};

TEST_F(IndexFaults, AKillWhileAnIndexIsMadeLeavesNoneOrAWholeOne)
{
    fs::create_directories(prepared);
    ExpectKillsAreHarmless("no index\n");
}

TEST_F(IndexFaults, AKillDuringAnUpdateLeavesTheOldStateOrTheNewOne)
{
    MakeIndex();
    const std::string before = Fresh();
    ChangeTree();
    ExpectKillsAreHarmless(before);
}

TEST(IndexKills, AtRandomMomentsAreHarmless)
{
    int killed = 0;
    EXPECT_EQ(KillUpdates({.seed = 21, .kills = 12, .files = 20, .worker = INDEX_WORKER}, &killed), "");
    EXPECT_GT(killed, 0);
}

TEST_F(IndexFaults, AFullDiskAtEachWriteCostsNoAnswer)
{
    MakeIndex();
    const std::string before = Fresh();
    ChangeTree();
    ExpectFullDisksAreHarmless(before);
}

TEST_F(IndexFaults, AFullDiskWhileAnIndexIsMadeLeavesNoneOrAWholeOne)
{
    fs::create_directories(prepared);
    ExpectFullDisksAreHarmless("no index\n");
}

// Flips one byte of each segment at this share of its length.
void Damage(const std::string& cache, size_t part, size_t parts)
{
    for (const auto& entry : fs::recursive_directory_iterator(cache)) {
        if (entry.path().extension() != ".segment")
            continue;
        std::fstream file(entry.path(), std::ios::binary | std::ios::in | std::ios::out);
        const auto place = static_cast<std::streamoff>(entry.file_size() * part / parts);
        file.seekg(place);
        const int byte = file.get();
        file.seekp(place);
        file.put(static_cast<char>(byte ^ 0x55));
    }
}

TEST_F(IndexFaults, ADamagedByteIsNoticedAndRepairedByTheNextUpdate)
{
    MakeIndex();
    const std::string whole = Fresh();
    const std::string cache = directory / "damaged";
    constexpr size_t kParts = 25;
    for (size_t part = 0; part < kParts; ++part) {
        fs::remove_all(cache);
        fs::copy(prepared, cache, fs::copy_options::recursive);
        Damage(cache, part, kParts);
        symbols::Index index(OptionsFor(tree.Root(), cache));
        const symbols::SnapshotPointer damaged = index.Current();
        const std::string answers = AnswersOf::Of(damaged, SourceTree::Words());
        EXPECT_TRUE(answers == whole || damaged == nullptr || damaged->IsDamaged()) << part;
        EXPECT_EQ(UpdateError(index), "");
        ASSERT_EQ(AnswersOf::Difference(AnswersOf::Of(index.Current(), SourceTree::Words()), whole), "") << part;
    }
}

} // namespace
