// A short checksum for our own files: it detects damage and changes, but not forgery.
#pragma once

#include <cstdint>
#include <string>
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

// The same as 16 hexadecimal digits, for names of files.
inline std::string Fnv1aDigits(std::string_view text)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string digits(16, '0');
    std::uint64_t hash = Fnv1a(text);
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, hash >>= 4)
        *digit = kDigits[hash & 15];
    return digits;
}

} // namespace base
