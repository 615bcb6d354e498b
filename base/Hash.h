// A short checksum for our own files: it detects damage and changes, but not forgery.
#pragma once

#include <cstdint>
#include <string_view>

namespace base {

// FNV-1a, 64 bits. Files contain its values, so it must not change.
constexpr std::uint64_t Fnv1a(std::string_view text)
{
    std::uint64_t hash = 14695981039346656037u;
    for (const char each : text)
        hash = (hash ^ static_cast<unsigned char>(each)) * 1099511628211u;
    return hash;
}

} // namespace base
