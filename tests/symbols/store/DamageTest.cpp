// Damaged files of an index: a wrong answer always comes with IsDamaged().

#include "symbols/store/Store.h"

#include "tests/support/AllAnswers.h"
#include "tests/support/FileContent.h"
#include "tests/support/RandomSources.h"
#include "tests/support/TempDirectory.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace symbols;

namespace {

class DamageTest : public testing::Test {
protected:
    DamageTest()
    {
        RandomSources random(1);
        const auto writer = std::move(*store.Write({"/root", "*.c"}, false, kNeverCancelled));
        for (int i = 0; i < 8; i++)
            writer->Put(random.Path(), random.Stamp(), random.Source());
        EXPECT_TRUE(writer->Commit());
        writer->Put(random.Path(), random.Stamp(), random.Source());
        writer->Touch(random.Path(), random.Stamp());
        EXPECT_TRUE(writer->Commit());
        answers = AllAnswers(*store.Current()).Text();
    }

    std::vector<std::string> Files(const std::string& suffix) const
    {
        std::vector<std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(temp / "index"))
            if (entry.path().string().ends_with(suffix))
                files.push_back(entry.path().string());
        std::ranges::sort(files);
        return files;
    }

    static void Write(const std::string& path, const std::string& content)
    {
        std::ofstream(path, std::ios::binary) << content;
    }

    // What a new reader finds.
    enum class Found { Nothing, TheSame, Damage, Lies };
    Found Read() const
    {
        const SnapshotPointer snapshot = Store(temp / "index").Current();
        if (snapshot == nullptr)
            return Found::Nothing;
        const bool isSame = AllAnswers(*snapshot).Text() == answers;
        return snapshot->IsDamaged() ? Found::Damage : isSame ? Found::TheSame : Found::Lies;
    }

    TempDirectory temp;
    Store store{temp / "index"};
    std::string answers;
};

} // namespace

TEST_F(DamageTest, AChangedByteOfASegmentIsNoticed)
{
    unsigned noticed = 0;
    for (const std::string& path : Files(".segment")) {
        const std::string content = Content(path);
        for (size_t at = 0; at < content.size(); at += content.size() / 60 + 1) {
            std::string damaged = content;
            damaged[at] = static_cast<char>(damaged[at] ^ 0x20);
            Write(path, damaged);
            const Found found = Read();
            ASSERT_NE(found, Found::Lies) << path << " byte " << at;
            noticed += found == Found::TheSame ? 0 : 1;
        }
        Write(path, content);
        ASSERT_EQ(Read(), Found::TheSame);
    }
    EXPECT_GT(noticed, 40u);
}

TEST_F(DamageTest, AChangedByteOfTheManifestMakesTheIndexUseless)
{
    const std::string path = temp / "index/manifest";
    const std::string content = Content(path);
    for (size_t at = 0; at < content.size(); at++) {
        std::string damaged = content;
        damaged[at] = static_cast<char>(damaged[at] ^ 1);
        Write(path, damaged);
        ASSERT_EQ(Read(), Found::Nothing) << "byte " << at;
    }
}

TEST_F(DamageTest, AShorterFileMakesTheIndexUseless)
{
    std::vector<std::string> files = Files(".segment");
    files.push_back(temp / "index/manifest");
    for (const std::string& path : files) {
        const std::string content = Content(path);
        for (const size_t length : {content.size() - 1, content.size() / 2, size_t(7), size_t(0)}) {
            Write(path, content.substr(0, length));
            ASSERT_EQ(Read(), Found::Nothing) << path << ", length " << length;
        }
        Write(path, content);
    }
    std::filesystem::remove(files.front());
    EXPECT_EQ(Read(), Found::Nothing);
}

TEST_F(DamageTest, AWriterStartsFromNothingWhereNothingIsUsable)
{
    Write(temp / "index/manifest", "not a manifest");
    const auto writer = Store(temp / "index").Write({"/root", "*.c"}, false, kNeverCancelled);
    ASSERT_TRUE(writer);
    (*writer)->Put("new.c", {}, SourceOf({SymbolNamed("f", 1)}));
    ASSERT_TRUE((*writer)->Commit());
    EXPECT_EQ(Store(temp / "index").Current()->Totals().files, 1u);
    EXPECT_EQ(Files(".segment").size(), 1u);
}
