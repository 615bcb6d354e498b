// The pseudo-tag with which a tags file claims that its names are in order, and the proof that the file is unchanged
// since.
#pragma once

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace tagsfile {

// The names are in order as defined by NameOrder. The value is the size of the file, up to the next tab. It has a fixed
// length so that it can be filled in at the end. The writer also gives the file's modification time the nanoseconds
// below. Any other tool that changes the file changes its size or its time, and practically never sets the same
// nanoseconds. The same content therefore gives the same file, and copies that keep the time keep the proof.
constexpr std::string_view kSortedClaim = "!_TAG_CPLUSTAGS_SORTED\t";

inline std::string SortedClaimValue(off_t size)
{
    char text[32];
    std::snprintf(text, sizeof text, "%020lld", static_cast<long long>(size));
    return text;
}

// Never 0, as in times kept in seconds. Less than a millisecond, so that the time is within the current second and not
// in the future.
inline long SortedClaimNanoseconds(off_t size)
{
    constexpr uint64_t kMost = 999'999;
    return static_cast<long>(((static_cast<uint64_t>(size) + 1) * 0x9E3779B97F4A7C15u >> 20) % kMost + 1);
}

} // namespace tagsfile
