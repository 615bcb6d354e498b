#include "tagsfile/TagsWriter.h"

#include "tagsfile/SortedClaim.h"

#include <gtest/gtest.h>

namespace tagsfile {
namespace {

using Texts = std::vector<std::string>;

class GivenLines : public LineSource {
public:
    explicit GivenLines(Texts lines) : lines(std::move(lines)) {}

    bool Next(std::string_view& line) override
    {
        if (place == lines.size())
            return false;
        line = lines[place++];
        return true;
    }

private:
    const Texts lines;
    size_t place = 0;
};

LineSources Sources(const std::vector<Texts>& all)
{
    LineSources sources;
    for (const Texts& lines : all)
        sources.push_back(std::make_unique<GivenLines>(lines));
    return sources;
}

// A file in memory.
struct Text {
    std::string text;
    long nanoseconds = 0; // of the modification time; 0 for none

    RewritableFile File()
    {
        return {[this](std::string_view more) {
                    text += more;
                    return true;
                },
                [this](off_t place, std::string_view over) {
                    text.replace(static_cast<size_t>(place), over.length(), over);
                    return true;
                },
                [this](const timespec& modified) { nanoseconds = modified.tv_nsec; }};
    }
};

const std::string kA = "a\tx.c\t1;\"\tf\n";
const std::string kB = "b\tx.c\t2;\"\tf\n";

TEST(TagsWriter, WritesPseudoTagsAndTheLinesOfAllSourcesInOrder)
{
    Text file;
    ASSERT_TRUE(WriteTags({3, 2}, "1.2", Sources({{kB}, {kA, kB}}), file.File().write));
    EXPECT_TRUE(file.text.starts_with("!_TAG_CPLUSTAGS_FILES\t3\t")) << file.text;
    EXPECT_NE(file.text.find("\n!_TAG_CPLUSTAGS_TAGS\t2\t"), std::string::npos) << file.text;
    EXPECT_TRUE(file.text.ends_with("\n!_TAG_PROGRAM_VERSION\t1.2\t//\n" + kA + kB)) << file.text;
    EXPECT_EQ(file.text.find(kSortedClaim), std::string::npos) << "it may be a pipe, whose size nobody knows";
}

TEST(TagsWriter, FailsWhenTheNumberOfLinesIsNotTheCount)
{
    for (const size_t count : {0, 1, 3}) {
        Text file;
        EXPECT_FALSE(WriteTags({1, count}, "1.2", Sources({{kA, kB}}), file.File())) << count;
        EXPECT_EQ(file.nanoseconds, 0) << "and claims nothing";
    }
}

TEST(TagsWriter, StopsWhenWritingFails)
{
    int calls = 0;
    const auto write = [&calls](std::string_view) { return ++calls < 2; };
    EXPECT_FALSE(WriteTags({1, 2}, "1.2", Sources({{kA, kB}}), write));
    EXPECT_EQ(calls, 2);
}

TEST(TagsWriter, AFileInOrderClaimsItsSizeAndHasTheTimeThatProvesIt)
{
    Text file;
    ASSERT_TRUE(WriteTags({1, 2}, "1.2", Sources({{kA, kB}}), file.File()));
    const auto size = static_cast<off_t>(file.text.length());
    EXPECT_NE(file.text.find(std::string(kSortedClaim) + SortedClaimValue(size) + "\t"), std::string::npos);
    EXPECT_EQ(file.nanoseconds, SortedClaimNanoseconds(size));
}

TEST(TagsWriter, AFileWithNamesOutOfOrderClaimsNoSizeOfAnyFile)
{
    // The first line is smaller as bytes, but its name is not.
    const std::string longer = "a\x01\tx.c\t1;\"\tf\n";
    Text file;
    ASSERT_TRUE(WriteTags({1, 2}, "1.2", Sources({{longer, kA}}), file.File()));
    EXPECT_NE(file.text.find(std::string(kSortedClaim) + SortedClaimValue(0) + "\t"), std::string::npos);
    EXPECT_EQ(file.nanoseconds, 0);
}

} // namespace
} // namespace tagsfile
