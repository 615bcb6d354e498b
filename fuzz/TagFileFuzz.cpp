// Reads any bytes as a tags file: the reader finds what a literal one finds, and path caches stay sorted.
#include "tests/tags/LiteralTagFile.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

void RequireSortedPaths(const BEntry& tags)
{
    const Lines paths = Paths(tags);
    const auto isNotLess = [](const std::string& a, const std::string& b) { return a >= b; };
    Require(std::adjacent_find(paths.begin(), paths.end(), isNotLess) == paths.end());
}

} // namespace

// The first byte chooses how names are matched; a pattern follows up to the first newline, and then the tags.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    static const TagsFolder folder;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const size_t end = std::min(text.find('\n'), text.size());
    const std::string pattern = text.substr(0, end);
    folder.directory.Write("tags", end < text.size() ? text.substr(end + 1) : "");

    const auto match = static_cast<LiteralMatch>(data[0] % 3);
    const bool stop = data[0] & 0x80;
    Require(RealMatches(folder.Tags(), pattern, match, stop) ==
            LiteralTagFile(folder.Tags(), pattern, match, stop).All());
    Names(folder.Entry());
    RequireSortedPaths(folder.Entry());
    return 0;
}
