// Random histories of an index: whatever happened before, it answers as one that is made from the same files at once.

#include "symbols/store/Store.h"

#include "tests/support/AllAnswers.h"
#include "tests/support/RandomSources.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>
#include <map>

using namespace symbols;

namespace {

struct FileState {
    tagging::FileStamp stamp;
    std::shared_ptr<const tagging::ParsedSource> source;
};
using Files = std::map<std::string, FileState>;

std::string AnswersFromNothing(const Files& files)
{
    SnapshotPointer snapshot;
    const auto writer = WriteInMemory(nullptr, [&](SnapshotPointer made) { snapshot = std::move(made); });
    for (const auto& [path, file] : files)
        writer->Put(path, file.stamp, *file.source);
    EXPECT_TRUE(writer->Commit());
    return AllAnswers(*snapshot).Text();
}

// One change of a writer, and of what should come out.
void ChangeSomething(RandomSources& random, Store::Writer& writer, Files* files)
{
    const std::string path = random.Path();
    const tagging::FileStamp stamp = random.Stamp();
    switch (random.Below(6)) {
    case 0:
        writer.Remove(path);
        files->erase(path);
        return;
    case 1:
        writer.Touch(path, stamp);
        if (const auto file = files->find(path); file != files->end())
            file->second.stamp = stamp;
        return;
    default: {
        const auto source = std::make_shared<const tagging::ParsedSource>(random.Source());
        writer.Put(path, stamp, *source);
        (*files)[path] = {stamp, source};
    }
    }
}

class History : public testing::TestWithParam<unsigned> {
protected:
    History() : random(GetParam()) {}

    // Up to 'most' changes in one commit; some writers are dropped before it.
    template <class MakeWriter>
    void Change(unsigned most, MakeWriter makeWriter)
    {
        Files next = files;
        const std::unique_ptr<Store::Writer> writer = makeWriter();
        for (unsigned i = random.Below(most); i > 0; i--)
            ChangeSomething(random, *writer, &next);
        if (random.Below(5) == 0)
            return;
        ASSERT_TRUE(writer->Commit());
        files = std::move(next);
        if (random.Below(4) == 0) { // the same writer again
            ChangeSomething(random, *writer, &files);
            ASSERT_TRUE(writer->Commit());
        }
    }

    RandomSources random;
    Files files;
};

} // namespace

TEST_P(History, OnTheDiskAnswersAsAFreshIndex)
{
    const TempDirectory temp;
    // Small limits: writers write several segments, and these are merged often.
    const StoreLimits limits = {random.Below(2) == 0 ? 3000u : 1u << 20, 1 + random.Below(4), 4096u << random.Below(4)};
    Store store(temp / "index", limits);
    for (int step = 0; step < 25; step++) {
        Change(12, [&] {
            auto writer = Store(temp / "index", limits).Write({"/root", "*.c"}, false, kNeverCancelled);
            EXPECT_TRUE(writer);
            return std::move(*writer);
        });
        if (step % 5 != 4) // comparing takes much longer than changing
            continue;
        const SnapshotPointer snapshot = store.Current();
        if (snapshot == nullptr) {
            ASSERT_TRUE(files.empty());
            continue;
        }
        ASSERT_EQ(AllAnswers(*snapshot).Text(), AnswersFromNothing(files)) << "step " << step;
        ASSERT_FALSE(snapshot->IsDamaged());
    }
}

TEST_P(History, InMemoryAnswersAsAFreshIndex)
{
    SnapshotPointer snapshot;
    for (int step = 0; step < 25; step++) {
        Change(12, [&] {
            return WriteInMemory(snapshot, [&](SnapshotPointer made) { snapshot = std::move(made); },
                                 {3000, 2, 1u << 20});
        });
        if (snapshot != nullptr && step % 5 == 4) {
            ASSERT_EQ(AllAnswers(*snapshot).Text(), AnswersFromNothing(files)) << "step " << step;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, History, testing::Range(0u, 8u));
