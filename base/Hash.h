// A short mark of a text, for files of our own: it tells damage and change, and is no defence against intent.
#pragma once

#include <cstdint>
#include <string_view>

namespace base {

// FNV-1a, 64 bits. Stored in files: it stays what it is.
constexpr std::uint64_t Fnv1a(std::string_view text)
{
    std::uint64_t hash = 14695981039346656037u;
    for (const char each : text)
        hash = (hash ^ static_cast<unsigned char>(each)) * 1099511628211u;
    return hash;
}

} // namespace base
