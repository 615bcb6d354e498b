#include "tagsfile/UnreadFiles.h"

#include "base/Holes.h"
#include "tagsfile/SortedClaim.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <unistd.h>

namespace tagsfile {

namespace {

std::string SizeText(off_t size)
{
    static constexpr std::array kUnits = {" bytes", " kB", " MB", " GB", " TB", " PB", " EB"};
    double number = static_cast<double>(size);
    size_t unit = 0;
    for (; number >= 1000 && unit + 1 < kUnits.size(); ++unit)
        number /= 1000;
    char text[32];
    std::snprintf(text, sizeof text, unit == 0 ? "%.0f" : "%.1f", number);
    return text + std::string(kUnits[unit]);
}

// The size in the file's pseudo-tag; nullopt without one, or when it is not a number.
std::optional<off_t> ClaimedSize(int descriptor)
{
    constexpr size_t kLongestHead = 4 * 1024;
    char text[kLongestHead];
    const ssize_t count = ::pread(descriptor, text, sizeof text, 0);
    std::string_view head(text, static_cast<size_t>(std::max<ssize_t>(count, 0)));
    while (head.starts_with('!') && !head.starts_with(kSortedClaim))
        head.remove_prefix(std::min(head.find('\n'), head.size() - 1) + 1);
    if (!head.starts_with(kSortedClaim))
        return std::nullopt;
    head.remove_prefix(kSortedClaim.size());
    long long size = 0;
    const auto [end, problem] = std::from_chars(head.data(), head.data() + head.size(), size);
    if (problem != std::errc() || end == head.data() + head.size() || *end != '\t' || size < 0)
        return std::nullopt;
    return size;
}

} // namespace

std::optional<std::string> WhyUnread(int descriptor, off_t size)
{
    if (size <= base::kManyBytes)
        return std::nullopt;
    if (base::IsMostlyHoles(descriptor))
        return "it is " + SizeText(size) + " long, and most of that is holes, which no tags program leaves";
    const std::optional<off_t> claimed = ClaimedSize(descriptor);
    if (claimed && size - *claimed > base::kManyBytes && size / 2 > *claimed)
        return "it is " + SizeText(size) + " long, and says that it was made with " + SizeText(*claimed);
    return std::nullopt;
}

} // namespace tagsfile
