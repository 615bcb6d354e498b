#include "scan/PatternScan.h"
#include "scan/SelectionScanner.h"
#include "scan/Text.h"
#include "tests/scan/LiteralScan.h"
#include "tests/support/FakeHost.h"

#include <gtest/gtest.h>

#include <random>

namespace {

// Names and brackets are frequent, so that groups close and selectors begin.
std::string RandomDocument(std::mt19937& random)
{
    static const char* const kTokens[] = {"a", "b",  "foo", "::", "::", ":",  ":", "<", ">",  "[", "]", "(", ")",
                                          " ", "\"", "'",   ";",  ",",  "->", "{", "}", "\n", "=", ".", "@", "std::"};
    std::string document;
    for (unsigned long tokens = random() % 14; tokens > 0; --tokens)
        document += kTokens[random() % std::size(kTokens)];
    return document;
}

std::string Shown(bool found, long start, long end, const std::string& pattern)
{
    return found ? "'" + pattern + "' at " + std::to_string(start) + " to " + std::to_string(end) : "nothing";
}

std::string Shown(const std::optional<scan::Pattern>& found)
{
    return found ? Shown(true, found->start, found->end, found->text) : Shown(false, 0, 0, "");
}

TEST(ScanForSuggestionPattern, FollowsItsRulesInRandomDocuments)
{
    std::mt19937 random(20041);
    for (int i = 0; i < 20000; ++i) {
        FakeHost host;
        host.text = RandomDocument(random);
        const long caret = static_cast<long>(random() % (host.text.size() + 1));
        const long anchor = std::max(0L, caret - static_cast<long>(random() % 3));
        for (const bool forCompletion : {false, true}) {
            LiteralScan expected(host);
            const bool isExpected = expected.Run(anchor, caret, forCompletion);
            long start = -99, end = -98;
            std::string pattern;
            const bool found = ScanForSuggestionPattern(&host, anchor, caret, start, end, pattern, forCompletion);
            ASSERT_EQ(Shown(found, start, end, pattern),
                      Shown(isExpected, expected.start, expected.end, expected.pattern))
                << "selection " << anchor << " to " << caret << " of <<<" << host.text << ">>>"
                << (forCompletion ? ", to complete" : ", to look up");
            const auto scanner = forCompletion ? scan::PatternForCompletion : scan::PatternForLookup;
            ASSERT_EQ(Shown(scanner(scan::StringText(host.text), anchor, caret)), Shown(found, start, end, pattern))
                << "without a host: <<<" << host.text << ">>>";
        }
    }
}

} // namespace
