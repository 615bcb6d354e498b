// The pseudo-tag by which a tags file says that its names are in order, and proves that nobody has changed it since.
#pragma once

#include <cstdio>
#include <ctime>
#include <string>
#include <string_view>
#include <sys/types.h>

// The names are in order as NameOrder has it. Any other tool that changes the file gives it another size, or at least
// another time of modification; what has no longer the size and the time that the pseudo-tag tells is not believed.
constexpr std::string_view kSortedClaim = "!_TAG_CPLUSTAGS_SORTED\t";

// What stands behind that, up to the next tab: always as long, so that it can be filled in once the size is known.
inline std::string SortedClaimValue(off_t size, const timespec& modified)
{
    char text[64];
    std::snprintf(text, sizeof text, "%020lld %020lld.%09ld", static_cast<long long>(size),
                  static_cast<long long>(modified.tv_sec), modified.tv_nsec);
    return text;
}
