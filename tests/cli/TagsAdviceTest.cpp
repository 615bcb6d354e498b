#include "wren/cli/TagsAdvice.h"

#include "tests/support/SparseFile.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace {

// The peak memory of this process, in bytes.
long MostMemory()
{
    rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss * 1024;
}

std::string Advice(const TempDirectory& directory)
{
    ::setenv("HOME", directory.Path().c_str(), 1); // excludes the user's own system tags
    const std::vector<std::string> problems = wren::ProblemsWithTags(directory.Path());
    return problems.empty() ? "" : problems.front();
}

const std::string kTag = "only\tone.c\t1;\"\tv\n";

} // namespace

TEST(TagsAdvice, ReadsOnlyTheBeginningOfAnEndlessLine)
{
    const TempDirectory directory;
    const long before = MostMemory();
    // Less than a gigabyte of holes reads like written NUL bytes.
    if (const std::string reason = MakeSparse(directory / "tags", kGigabyte / 2); !reason.empty())
        GTEST_SKIP() << reason;
    EXPECT_NE(Advice(directory).find("tags has no line numbers"), std::string::npos) << Advice(directory);
    EXPECT_LT(MostMemory() - before, 100'000'000);
}

TEST(TagsAdvice, JudgesAFileByItsFirstTags)
{
    const TempDirectory directory;
    const std::string pattern = "only\tone.c\t/^int only;$/;\"\tv\n";
    const struct {
        const char* why;
        std::string tags;
        const char* advice; // a part of it, "" for none
    } kCases[] = {
        {"a tag", kTag, ""},
        {"pseudo-tags alone", "!_TAG_A\t1\t//\n\n", ""},
        {"a tag without an end", "only\tone.c\t1", ""},
        {"only its beginning", "only\tone.c\t", "no line numbers"},
        {"no tabs", "only\n", "no line numbers"},
        {"search patterns", pattern, "no line numbers"},
        {"one of both", pattern + kTag, ""},
        {"a tag behind a line of NUL bytes", std::string(10'000, '\0') + "\n" + kTag, ""},
        {"a tag behind as many lines as are looked at", pattern + std::string(300'000, 'x') + "\n" + kTag,
         "no line numbers"},
        {"fields behind a scope", "f\tone.c\t1;\"\tp\tclass:A\ttyperef:typename:int\n", "fields behind its scopes"},
    };
    for (const auto& c : kCases) {
        directory.Write("tags", c.tags);
        const std::string advice = Advice(directory);
        if (*c.advice == '\0')
            EXPECT_EQ(advice, "") << c.why;
        else
            EXPECT_NE(advice.find(c.advice), std::string::npos) << c.why << ": " << advice;
    }
}
