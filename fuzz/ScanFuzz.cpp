// Scans and completes at any place of any text: results lie where they say, and the pattern scanner follows its rules.
#include "fuzz/Require.h"
#include "scan/Predicates.h"
#include "scan/SelectionScanner.h"
#include "tests/scan/LiteralScan.h"
#include "tests/support/FakeHost.h"

#include <algorithm>
#include <cstdint>

namespace {

void ScanPattern(FakeHost& host, bool forCompletion)
{
    LiteralScan expected(host);
    const bool isExpected = expected.Run(host.selectionStart, host.selectionEnd, forCompletion);
    long start = -99, end = -98;
    std::string pattern;
    const bool found =
        ScanForSuggestionPattern(&host, host.selectionStart, host.selectionEnd, start, end, pattern, forCompletion);
    Require(found == isExpected && start == expected.start && end == expected.end && pattern == expected.pattern,
            "the pattern scanner follows its rules");
    Require(!found || end - start == static_cast<long>(pattern.length()), "a pattern lies where it is said to");
}

void ScanWords(FakeHost& host)
{
    std::string word;
    if (ScanForWord(&host, host.selectionStart, host.selectionEnd, word))
        Require(!word.empty() && std::all_of(word.begin(), word.end(), IsIDCharOrColon), "a word is one");
    else
        Require(word.empty(), "no word is found empty");

    long caret, start, length;
    if (IsPatternBeforeSelection(&host, caret, start, length))
        Require(caret == host.selectionEnd && start >= -1 && start + length == caret, "a pattern ends at the caret");
    else
        Require(caret == 0 && start == 0 && length == 0, "no pattern has no place");
}

} // namespace

// The first two bytes are the selection; a text up to the first NUL is the completion, the rest the document.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 3)
        return 0;
    const std::string text(reinterpret_cast<const char*>(data) + 2, size - 2);
    const std::string completion = text.substr(0, text.find('\0'));
    FakeHost host;
    host.text = text.substr(std::min(completion.length() + 1, text.length()));
    const long places = host.TextLength() + 1;
    host.selectionStart = std::min(data[0] % places, data[1] % places);
    host.selectionEnd = std::max(data[0] % places, data[1] % places);

    ScanWords(host);
    ScanPattern(host, false);
    ScanPattern(host, true);
    ReplaceWord(&host, completion);
    return 0;
}
