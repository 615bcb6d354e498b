// Searches in the tags of all headers of a machine find what another program reads there.

#include "tags/Tags.h"

#include "tests/support/ExpectedMatches.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/EntryRef.h"

#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <vector>

namespace {

std::vector<std::string> Found(const std::string& pattern)
{
    const BEntry local;
    const BEntry system(HEADER_TAGS);
    Tags tags(&local, &system, pattern, true);
    std::vector<std::string> found;
    if (!tags.Rewind())
        return {"(cannot be opened)"};
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
    bool isSystem;
    while (tags.NextMatch(name, qualifier, kind, ref, line, isSystem, false, TagFile::ExactMatch()))
        found.push_back(name + "\t" + kind + "\t" + std::to_string(line) + "\t" + ref.Path() + "\t" + qualifier);
    return found;
}

} // namespace

TEST(RealHeaders, EveryMatchAgreesWithAnIndependentReader)
{
    const std::vector<ExpectedLookup> lookups = ExpectedLookups();
    ASSERT_EQ(lookups.size(), 200u);
    std::cout << "looking up " << lookups.size() / kLookupStep << " of " << lookups.size() << " names\n";
    size_t matches = 0;
    for (size_t i = 0; i < lookups.size(); i += kLookupStep) {
        EXPECT_FALSE(lookups[i].matches.empty()) << lookups[i].pattern;
        EXPECT_EQ(Found(lookups[i].pattern), lookups[i].matches) << lookups[i].pattern;
        matches += lookups[i].matches.size();
    }
    std::cout << matches << " matches compared\n";
}
