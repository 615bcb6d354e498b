// The program when the system starts no threads.

#include "tests/support/NoThreads.h"
#include "tests/cplustags/Workspace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

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
    EXPECT_THAT(run.errors, HasSubstr("cplustags: the system starts no more threads (Resource temporarily "
                                      "unavailable): fewer sources are tagged at a time\n"));
    EXPECT_THAT(run.errors, HasSubstr("Resource temporarily unavailable\n"));
    EXPECT_EQ(work.Content("tags"), "old\told.c\t1;\"\tf\n");
    EXPECT_EQ(work.Leaves(), (Workspace::Words{"a.c", "tags"}));
}

} // namespace
