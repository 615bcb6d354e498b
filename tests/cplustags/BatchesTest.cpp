// Large runs, which give ctags many files at once: only the time may differ.

#include "tests/cplustags/Workspace.h"

#include <gtest/gtest.h>

namespace {

using Words = Workspace::Words;

constexpr int kSources = 1500;

class Batches : public testing::Test {
protected:
    Batches()
    {
        std::string list;
        for (int number = 0; number < kSources; ++number)
            list += WriteSource(std::to_string(number)) + "\n";
        work.Write("list", list);
        // After a batch fails, its files and all others are tagged one by one.
        work.environment["CPLUSTAGS_JOBS"] = "1";
        const ProgramRun run = Make("[ $kind = files ] || exit 1\n");
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.errors, "") << "nothing is left out";
        EXPECT_EQ(Kinds(), (Words{"batch", "files"}));
        tags = work.Content("tags");
    }

    // C, and sometimes Objective-C or a name that does not fit into a batch.
    std::string WriteSource(const std::string& number) const
    {
        const std::string function = "int function_" + number + "(void) { return 0; }\n";
        if (number.ends_with("50"))
            return work.Write("s" + number + ".m", "@interface C" + number + "\n- (void)f;\n@end\n" + function);
        return work.Write((number.ends_with("99") ? "s\\" : "s") + number + ".c", function);
    }

    // Runs with a ctags that first executes 'branches'; $kind is "batch" or "files".
    ProgramRun Make(const std::string& branches)
    {
        std::filesystem::remove(work / "kinds");
        std::filesystem::remove(work / "tags");
        work.environment["CPLUSTAGS_CTAGS"] = work.WriteProgram(
            "stand-in/ctags", "#!/bin/sh\n"
                              "kind=batch\n"
                              "case \" $* \" in *--filter=yes*) kind=files;; esac\n"
                              "echo $kind >>'" +
                                  work / "kinds" + "'\n" + branches + "exec ctags-universal \"$@\"\n");
        return work.Run({"--c-kinds=+p", "-f", "tags", "-L", "list"});
    }

    // The kinds of ctags runs, without duplicates.
    Words Kinds() const
    {
        Words kinds;
        std::ifstream file(work / "kinds");
        for (std::string kind; std::getline(file, kind);)
            if (std::find(kinds.begin(), kinds.end(), kind) == kinds.end())
                kinds.push_back(kind);
        std::sort(kinds.begin(), kinds.end());
        return kinds;
    }

    Workspace work;
    std::string tags; // the result of tagging each file by itself
};

TEST_F(Batches, GiveTheSameTagsAsSingleFiles)
{
    const ProgramRun run = Make("");
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(Kinds(), (Words{"batch", "files"})) << "the last files, and odd names, come by themselves";
    EXPECT_TRUE(work.Content("tags") == tags);
    EXPECT_EQ(work.Tags().size(), kSources + 2u * kSources / 100) << "an interface and a method in each of some";
}

TEST_F(Batches, AreRetriedFileByFileAfterACrash)
{
    const ProgramRun run = Make("[ $kind = files ] || kill -SEGV $$\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "") << "nothing is left out";
    EXPECT_TRUE(work.Content("tags") == tags);
}

TEST_F(Batches, AreRetriedFileByFileAfterAHang)
{
    work.environment["CPLUSTAGS_TIME_LIMIT"] = "1";
    EXPECT_EQ(Make("[ $kind = files ] || kill -STOP $$\n").errors, "");
    EXPECT_TRUE(work.Content("tags") == tags);
}

} // namespace
