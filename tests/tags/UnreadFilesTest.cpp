#include "tags/UnreadFiles.h"

#include "tags/SortedClaim.h"
#include "tests/support/SparseFile.h"
#include "tests/tags/TagsFolder.h"
#include "vetch/app/BApplication.h"
#include "vetch/app/BMessage.h"
#include "vetch/app/Loop.h"

#include <limits>

namespace {

class ListeningApplication : public BApplication {
public:
    void MessageReceived(BMessage* message) override
    {
        const char* path = "";
        const char* why = "";
        if (message->what == FourCC("tgur") && message->FindString("path", &path) == B_OK &&
            message->FindString("why", &why) == B_OK)
            heard.push_back(path + std::string(": ") + why);
    }

    Lines heard;
};

std::string Claim(off_t size)
{
    return std::string(kSortedClaim) + SortedClaimValue(size) + "\t//\n";
}

} // namespace

TEST(SparseTagsFiles, AreNotReadWhenLargerThanTheyClaim)
{
    const struct {
        const char* why;
        std::string head;
        off_t size;
        const char* unread; // "" when it is read
    } kCases[] = {
        {"no claim", TagLine("a", "a.cpp", 1, "f"), 100 * kGigabyte, ""},
        {"as it says", Claim(100 * kGigabyte), 100 * kGigabyte, ""},
        {"shorter", Claim(100 * kGigabyte), 2 * kGigabyte, ""},
        {"some were added", Claim(5'000'000'000), 10'000'000'000, ""},
        {"a gigabyte was added", Claim(500'000'000), 500'000'000 + kGigabyte, ""},
        {"still a usual size", Claim(125), kGigabyte, ""},
        {"nearly all was added", Claim(125), 100'000'000'000,
         "it is 100.0 GB long, and says that it was made with 125 bytes"},
        {"behind other pseudo-tags", "!_TAG_A\t1\t//\n" + Claim(2'000'000), 16'000'000'000'000,
         "it is 16.0 TB long, and says that it was made with 2.0 MB"},
        {"the longest there can be", Claim(0), std::numeric_limits<off_t>::max(),
         "it is 9.2 EB long, and says that it was made with 0 bytes"},
        {"no number", std::string(kSortedClaim) + "x\t//\n", 100 * kGigabyte, ""},
        {"below any number", std::string(kSortedClaim) + "-5\t//\n", 100 * kGigabyte, ""},
        {"beyond any number", std::string(kSortedClaim) + "99999999999999999999\t//\n", 100 * kGigabyte, ""},
        {"a claim that does not end", std::string(kSortedClaim) + "125", 100 * kGigabyte, ""},
        {"among the tags", TagLine("a", "a.cpp", 1, "f") + Claim(125), 100 * kGigabyte, ""},
        {"empty", "", 100 * kGigabyte, ""},
    };
    const TagsFolder folder;
    for (const auto& c : kCases) {
        folder.WriteTags(c.head);
        const int file = ::open(folder.Tags().c_str(), O_RDONLY | O_CLOEXEC);
        EXPECT_EQ(WhyUnread(file, c.size).value_or(""), c.unread) << c.why; // of a file that is so long in earnest
        ::close(file);
    }
}

TEST(SparseTagsFiles, HaveNoLinesAndAreReportedEachTime)
{
    const TagsFolder folder(TagLine("a", "a.cpp", 1, "f"));
    if (const std::string reason = MakeSparse(folder.Tags(), kTerabyte); !reason.empty())
        GTEST_SKIP() << reason;
    ListeningApplication application;
    EXPECT_EQ(Matches(folder.Entry(), "a"), Lines{}) << "and it can be opened";
    EXPECT_EQ(Names(folder.Entry()), Lines{});
    EXPECT_EQ(Paths(folder.Entry()), Lines{});
    vetch::RunPending();
    const std::string told =
        folder.Tags() + ": it is 1.1 TB long, and most of that is holes, which no tags program leaves";
    EXPECT_EQ(application.heard, (Lines{told, told, told}));
}

TEST(SparseTagsFiles, AreReadAtTheUsualSize)
{
    const TagsFolder folder(TagLine("a", "a.cpp", 1, "f"));
    ASSERT_EQ(::truncate(folder.Tags().c_str(), 1'000'000), 0);
    ListeningApplication application;
    EXPECT_EQ(Matches(folder.Entry(), "a"), Lines{"a f a.cpp:1"}) << "holes and all";
    vetch::RunPending();
    EXPECT_EQ(application.heard, Lines{});
}
