// Results of another program for the tags of all headers of this machine (tests/tags/headers).
#pragma once

#include <fstream>
#include <string>
#include <vector>

// Each name searches the whole file, which takes ten times as long with sanitizers: they try one name in ten.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr size_t kLookupStep = 10;
#else
constexpr size_t kLookupStep = 1;
#endif

struct ExpectedLookup {
    std::string pattern;
    // In the file's order "name kind line file qualifier", separated by tabs; for completions, the offered names.
    std::vector<std::string> matches;
};

inline std::vector<ExpectedLookup> ExpectedLookups(const char* path = EXPECTED_MATCHES)
{
    std::vector<ExpectedLookup> lookups;
    std::ifstream file(path, std::ios::binary);
    for (std::string text; std::getline(file, text);) {
        const std::string rest = text.substr(2);
        if (text[0] == '?')
            lookups.push_back({rest, {}});
        else
            lookups.back().matches.push_back(rest);
    }
    return lookups;
}
