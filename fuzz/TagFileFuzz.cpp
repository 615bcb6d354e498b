// Reads any bytes as a tags file: the reader finds what a literal one finds, also once it knows whether the file is in
// order, and path caches stay sorted.
#include "tests/tags/LiteralTagFile.h"
#include "tests/tagsfile/LearnedOrder.h"

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

// Each line many times: enough to bisect.
std::string Multiplied(const std::string& text)
{
    constexpr size_t kEnough = 20'000;
    const size_t times = text.empty() ? 0 : kEnough / text.size();
    std::string all;
    for (size_t line = 0, end = 0; line < text.size(); line = end) {
        end = std::min(text.find('\n', line), text.size() - 1) + 1;
        for (size_t i = 0; i <= times; ++i)
            all.append(text, line, end - line);
    }
    return all;
}

void RequireSameWhenKnown(const std::string& path, const std::string& pattern, LiteralMatch match, bool stop)
{
    MakeKnown(path);
    const Lines found = RealMatches(path, pattern, match, stop);
    MakeUnknown(path);
    Require(found == LiteralTagFile(path, pattern, match, stop).All());
}

} // namespace

// The first byte chooses how names are matched, and whether lines are multiplied; a pattern follows up to the first
// newline, and then the tags.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    static const TagsFolder folder;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const size_t end = std::min(text.find('\n'), text.size());
    const std::string pattern = text.substr(0, end);
    const std::string tags = end < text.size() ? text.substr(end + 1) : "";
    folder.directory.Write("tags", data[0] & 0x40 ? Multiplied(tags) : tags);

    const auto match = static_cast<LiteralMatch>(data[0] % 3);
    const bool stop = data[0] & 0x80;
    Require(RealMatches(folder.Tags(), pattern, match, stop) ==
            LiteralTagFile(folder.Tags(), pattern, match, stop).All());
    RequireSameWhenKnown(folder.Tags(), pattern, match, stop);
    Names(folder.Entry());
    RequireSortedPaths(folder.Entry());
    return 0;
}
