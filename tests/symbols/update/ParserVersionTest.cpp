#include "symbols/update/ParserVersion.h"

#include "tests/support/Fifo.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

namespace symbols {

namespace {

class DescribingParsers : public testing::Test {
protected:
    base::Result<std::string> Describe(const std::string& script)
    {
        settings.ctags.program = work.Write("ctags", "#!/bin/sh\n" + script);
        std::filesystem::permissions(settings.ctags.program, std::filesystem::perms::owner_all);
        return DescribeParsers(settings, false, cancel);
    }

    const TempDirectory work;
    const Fifo fifo;
    tagging::Settings settings;
    base::CancelToken cancel;
};

} // namespace

TEST_F(DescribingParsers, NamesTheVersionOfCtags)
{
    const base::Result<std::string> text = Describe("echo Universal Ctags 77.0; echo more\n");
    ASSERT_TRUE(text);
    EXPECT_THAT(*text, testing::HasSubstr("\nctags Universal Ctags 77.0\nignored"));
}

TEST_F(DescribingParsers, AsksAgainWhenTheProgramHasChanged)
{
    ASSERT_TRUE(Describe("echo one\n"));
    EXPECT_THAT(*Describe("echo another\n"), testing::HasSubstr("\nctags another\n"));
}

TEST_F(DescribingParsers, FailsWhenCtagsDoesNotAnswer)
{
    settings.ctags.timeLimit = 1;
    const base::Result<std::string> text = Describe("read line <" + fifo.Path() + "\n");
    ASSERT_FALSE(text);
    EXPECT_EQ(text.Failure().Message(), work / "ctags does not answer");
}

TEST_F(DescribingParsers, FailsWhenItIsCancelledWhileCtagsHangs)
{
    settings.ctags.timeLimit = 100'000;
    std::jthread canceller([this] {
        EXPECT_EQ(fifo.ReadLine(::getpid()), "asked");
        cancel.Cancel();
    });
    const Fifo forever;
    const base::Result<std::string> text =
        Describe("echo asked >" + fifo.Path() + "\nread line <" + forever.Path() + "\n");
    ASSERT_FALSE(text);
    EXPECT_EQ(text.Failure().Message(), "cancelled");
}

TEST_F(DescribingParsers, ReadsOnlyTheBeginningOfEndlessOutput)
{
    EXPECT_TRUE(Describe("while echo Universal Ctags; do :; done\n"));
}

} // namespace symbols
