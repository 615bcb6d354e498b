// Completions of a prefix from the tags of all headers of a machine equal the results of another program.

#include "completion/Completions.h"
#include "tags/CompletionCache.h"
#include "tags/Tags.h"

#include "tests/support/ExpectedMatches.h"
#include "tests/support/WaitLimit.h"
#include "vetch/storage/BEntry.h"
#include "vetch/support/FThread.h"

#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <vector>

namespace {

Tags TagsFor(const std::string& pattern)
{
    const BEntry local;
    const BEntry system(HEADER_TAGS);
    return Tags(&local, &system, pattern, false);
}

} // namespace

TEST(CompletionHeaders, TypingAgreesWithAnIndependentReader)
{
    const std::vector<ExpectedLookup> lookups = ExpectedLookups();
    ASSERT_EQ(lookups.size(), 100u);
    CompletionCache cache;
    Tags tags = TagsFor("");
    ASSERT_FALSE(cache.LoadIfNeeded(tags, true));
    constexpr time_t kSeconds = 300; // for a million names, with sanitizers
    {
        const WaitLimit limit("all names had been loaded", kSeconds);
        vetch::JoinThreads();
    }
    ASSERT_TRUE(cache.LoadIfNeeded(tags, true)) << "one load serves all prefixes";
    size_t names = 0;
    for (const ExpectedLookup& lookup : lookups) {
        std::vector<std::string> completions;
        cache.GetCompletions(lookup.pattern.c_str(), completions, 200);
        EXPECT_FALSE(lookup.matches.empty()) << lookup.pattern;
        EXPECT_EQ(completions, lookup.matches) << lookup.pattern;
        names += completions.size();
    }
    std::cout << names << " names compared\n";
}

TEST(CompletionHeaders, TheCommandAgreesWithAnIndependentReader)
{
    const std::vector<ExpectedLookup> lookups = ExpectedLookups(EXPECTED_CANDIDATES);
    ASSERT_EQ(lookups.size(), 20u);
    constexpr size_t kStep = (kLookupStep + 1) / 2; // with sanitizers one in five, since each reads the whole file
    std::cout << "completing " << (lookups.size() + kStep - 1) / kStep << " of " << lookups.size() << " prefixes\n";
    size_t names = 0;
    for (size_t i = 0; i < lookups.size(); i += kStep) {
        Tags tags = TagsFor(lookups[i].pattern);
        const Completions completions(tags);
        EXPECT_FALSE(lookups[i].matches.empty()) << lookups[i].pattern;
        EXPECT_EQ(completions.Strings(), lookups[i].matches) << lookups[i].pattern;
        names += completions.Size();
    }
    std::cout << names << " names compared\n";
}
