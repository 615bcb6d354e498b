// What is found in the tags of all headers of a machine is what another program reads there.

#include "tags/Tags.h"

#include "vetch/storage/BEntry.h"
#include "vetch/storage/EntryRef.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <vector>

namespace {

// Each name is a search of the whole file, which takes ten times as long with sanitizers: they try one name in ten.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr size_t kStep = 10;
#else
constexpr size_t kStep = 1;
#endif

struct Lookup {
    std::string pattern;
    std::vector<std::string> matches; // "name kind line file qualifier", between tabs
};

std::vector<Lookup> Expected()
{
    std::vector<Lookup> lookups;
    std::ifstream file(EXPECTED_MATCHES, std::ios::binary);
    for (std::string text; std::getline(file, text);) {
        const std::string rest = text.substr(2);
        if (text[0] == '?')
            lookups.push_back({rest, {}});
        else
            lookups.back().matches.push_back(rest);
    }
    return lookups;
}

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

TEST(RealHeaders, EveryMatchIsWhatAnotherProgramReads)
{
    const std::vector<Lookup> lookups = Expected();
    ASSERT_EQ(lookups.size(), 200u);
    std::cout << "looking up " << lookups.size() / kStep << " of " << lookups.size() << " names\n";
    size_t matches = 0;
    for (size_t i = 0; i < lookups.size(); i += kStep) {
        EXPECT_FALSE(lookups[i].matches.empty()) << lookups[i].pattern;
        EXPECT_EQ(Found(lookups[i].pattern), lookups[i].matches) << lookups[i].pattern;
        matches += lookups[i].matches.size();
    }
    std::cout << matches << " matches compared\n";
}
