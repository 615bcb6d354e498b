// Files tagged where the system starts fewer threads than there are jobs.
#include "cplustags/Tagger.h"

#include "cplustags/Progress.h"
#include "tests/cplustags/Workspace.h"
#include "tests/support/NoThreads.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>

namespace {

using testing::HasSubstr;

class FewThreads : public testing::Test {
protected:
    FewThreads()
    {
        settings.ctags.program = work.WriteProgram("ctags", StandInForCtags(""));
        settings.ctags.directory = work.Path();
        settings.ctags.temporaries = work.Path();
        settings.jobs = 3;
    }

    // Of so many files, with that many threads and no more; answers what was said.
    std::string Tag(unsigned files, int threads)
    {
        const std::string said = work / "said";
        const int descriptor = ::open(said.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        {
            cplustags::Progress progress(descriptor);
            const base::CancelToken cancel;
            cplustags::Tagger tagger(settings, progress, cancel, [&](std::function<void()> body) {
                if (threads-- <= 0)
                    throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
                return std::thread(std::move(body));
            });
            for (unsigned file = 0; file < files; ++file) {
                const std::string leaf = "s" + std::to_string(file) + ".c";
                tagger.Add(work.Write(leaf, ""), leaf);
            }
            tagger.Finish();
            EXPECT_EQ(tagger.Failure(), "");
            EXPECT_EQ(tagger.Total().files, files);
            for (unsigned file = 0; file < files; ++file)
                EXPECT_TRUE(tagger.IsTagged(file)) << file;
        }
        ::close(descriptor);
        return work.Content("said");
    }

    const Workspace work;
    cplustags::Settings settings;
};

const std::string kFewer = "cplustags: the system starts no more threads (Resource temporarily unavailable): fewer "
                           "sources are tagged at a time\n";

TEST_F(FewThreads, TheCallerTagsAllFilesWhenNoThreadStarts)
{
    EXPECT_EQ(Tag(200, 0), kFewer);
    EXPECT_EQ(Tag(1, 0), kFewer);
    EXPECT_EQ(Tag(0, 0), "");
}

TEST_F(FewThreads, ASingleThreadTagsAllFiles)
{
    EXPECT_THAT(Tag(200, 1), testing::AnyOf(kFewer, "")) << "it may have been fast enough alone";
}

TEST(ProgramWithoutThreads, FailsWithAReasonAndLeavesTheOldTags)
{
    Workspace work;
    const std::optional<Workspace::Words> command = WithoutThreads(Workspace::Command({"-f", "tags", "a.c"}));
    if (!command)
        GTEST_SKIP() << "threads cannot be refused to a program here (setpriv, prlimit)";
    work.Write("a.c", "int a;\n");
    work.Write("tags", "old\told.c\t1;\"\tf\n");
    const ProgramRun run = RunProgram(*command, work.Path());
    EXPECT_EQ(run.status, 1) << "no process for ctags can be had either";
    EXPECT_THAT(run.errors, HasSubstr(kFewer));
    EXPECT_THAT(run.errors, HasSubstr("Resource temporarily unavailable\n"));
    EXPECT_EQ(work.Content("tags"), "old\told.c\t1;\"\tf\n");
    EXPECT_EQ(work.Leaves(), (Workspace::Words{"a.c", "tags"}));
}

} // namespace
