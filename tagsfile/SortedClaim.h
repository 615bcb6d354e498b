// The pseudo-tag by which a tags file says that its names are in order, and what shows that nobody has changed it
// since.
#pragma once

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace tagsfile {

// The names are in order as NameOrder has it. The value is the size of the file, up to the next tab, always as long, so
// that it can be filled in once the size is known. Who writes it also gives the file a time of modification with these
// nanoseconds: any other tool that changes the file gives it another size, or at least another time, which is as good
// as never one of the same nanoseconds. So the content is the same whenever it is made, and copies with their times are
// as good.
constexpr std::string_view kSortedClaim = "!_TAG_CPLUSTAGS_SORTED\t";

inline std::string SortedClaimValue(off_t size)
{
    char text[32];
    std::snprintf(text, sizeof text, "%020lld", static_cast<long long>(size));
    return text;
}

// Never 0, as times have it that are kept in seconds; less than a millisecond, so that the time is that of the second
// in which the file is made, and not still to come.
inline long SortedClaimNanoseconds(off_t size)
{
    constexpr uint64_t kMost = 999'999;
    return static_cast<long>(((static_cast<uint64_t>(size) + 1) * 0x9E3779B97F4A7C15u >> 20) % kMost + 1);
}

} // namespace tagsfile
