#include "tests/support/SparseFile.h"
#include "tests/tags/TagsFolder.h"
#include "vetch/app/BApplication.h"
#include "vetch/app/BMessage.h"
#include "vetch/app/Loop.h"

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

} // namespace

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

TEST(SparseTagsFiles, AreReportedToAReporterInPlaceOfTheApplication)
{
    const TagsFolder folder(TagLine("a", "a.cpp", 1, "f"));
    if (const std::string reason = MakeSparse(folder.Tags(), kTerabyte); !reason.empty())
        GTEST_SKIP() << reason;
    Lines heard;
    SetUnreadReporter([&heard](const std::string& path, const std::string&) { heard.push_back(path); });
    EXPECT_EQ(Matches(folder.Entry(), "a"), Lines{});
    SetUnreadReporter(nullptr);
    EXPECT_EQ(Matches(folder.Entry(), "a"), Lines{});
    EXPECT_EQ(heard, Lines{folder.Tags()});
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
