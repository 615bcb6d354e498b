#include "tagging/Tagger.h"

#include "tests/support/StandInForCtags.h"
#include "tests/support/TempDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <mutex>
#include <system_error>

namespace tagging {
namespace {

using Texts = std::vector<std::string>;
using testing::ElementsAre;
using testing::IsEmpty;

// Records all reports. Any thread.
class Listener final : public Observer {
public:
    void Say(const std::string& message) override
    {
        const std::lock_guard lock(mutex);
        said.push_back(message);
    }
    void Show(size_t, size_t known) override { lastKnown = known; }

    std::mutex mutex;
    Texts said;
    size_t lastKnown = 0;
};

class TaggerTest : public testing::Test {
protected:
    TaggerTest()
        // A tagger's program ignores it: a ctags may end before it has read all names.
        : signalBefore(std::signal(SIGPIPE, SIG_IGN))
    {
        UseStandIn("");
        settings.ctags.directory = work.Path();
        settings.ctags.temporaries = work.Path();
        settings.jobs = 3;
    }

    ~TaggerTest() override { std::signal(SIGPIPE, signalBefore); }

    void UseStandIn(const std::string& branches)
    {
        settings.ctags.program = work.Write("ctags", StandInForCtags(branches));
        std::filesystem::permissions(settings.ctags.program, std::filesystem::perms(0755));
    }

    void AddFiles(Tagger& tagger, unsigned files)
    {
        for (unsigned file = 0; file < files; ++file) {
            const std::string leaf = "s" + std::to_string(file) + ".c";
            tagger.Add(work.Write(leaf, ""), leaf);
        }
    }

    void (*const signalBefore)(int);
    const TempDirectory work;
    Settings settings;
    Listener listener;
    base::CancelToken cancel;
};

TEST_F(TaggerTest, TakesItsMessagesAndItsProgressToTheObserver)
{
    UseStandIn("*s1.c) kill -SEGV $$;;\n");
    Tagger tagger(settings, listener, cancel);
    AddFiles(tagger, 3);
    tagger.Finish();
    EXPECT_EQ(tagger.Failure(), "");
    EXPECT_EQ(tagger.Total().files, 2u);
    EXPECT_EQ(tagger.Total().crashed, 1u);
    EXPECT_THAT(listener.said, ElementsAre("ctags crashed on " + work / "s1.c" + ", which is left out"));
    EXPECT_EQ(listener.lastKnown, 3u);
}

TEST_F(TaggerTest, EndsWithoutAFailureWhenItIsCancelled)
{
    UseStandIn("*) sleep 1000;;\n");
    Tagger tagger(settings, listener, cancel);
    AddFiles(tagger, 3);
    EXPECT_TRUE(tagger.GoesOn());
    cancel.Cancel();
    tagger.Finish();
    EXPECT_FALSE(tagger.GoesOn());
    EXPECT_EQ(tagger.Failure(), "");
    EXPECT_EQ(tagger.Total().files, 0u);
    EXPECT_THAT(listener.said, IsEmpty());
}

// A system that starts fewer threads than there are jobs.
class FewThreads : public TaggerTest {
protected:
    // Tags that many files with at most that many threads; returns the messages.
    Texts Tag(unsigned files, int threads)
    {
        listener.said.clear();
        Tagger tagger(settings, listener, cancel, [&](std::function<void()> body) {
            if (threads-- <= 0)
                throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
            return std::thread(std::move(body));
        });
        AddFiles(tagger, files);
        tagger.Finish();
        EXPECT_EQ(tagger.Failure(), "");
        EXPECT_EQ(tagger.Total().files, files);
        for (unsigned file = 0; file < files; ++file)
            EXPECT_TRUE(tagger.IsTagged(file)) << file;
        return listener.said;
    }
};

constexpr const char* kFewer = "the system starts no more threads (Resource temporarily unavailable): fewer sources "
                               "are tagged at a time";

TEST_F(FewThreads, TheCallerTagsAllFilesWhenNoThreadStarts)
{
    EXPECT_THAT(Tag(200, 0), ElementsAre(kFewer));
    EXPECT_THAT(Tag(1, 0), ElementsAre(kFewer));
    EXPECT_THAT(Tag(0, 0), IsEmpty());
}

TEST_F(FewThreads, ASingleThreadTagsAllFiles)
{
    EXPECT_THAT(Tag(200, 1), testing::AnyOf(ElementsAre(kFewer), IsEmpty())) << "it may have been fast enough alone";
}

} // namespace
} // namespace tagging
