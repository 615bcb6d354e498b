// Number types and error codes of the whole framework.
#pragma once

#include <cstdint>

using int8 = std::int8_t;
using uint8 = std::uint8_t;
using int32 = std::int32_t;
using uint32 = std::uint32_t;
using int64 = std::int64_t;
using bigtime_t = int64; // microseconds
using status_t = int32;  // B_OK, or a negative error
using thread_id = long;

enum : status_t {
    B_OK = 0,
    B_ERROR = -1,
    B_ENTRY_NOT_FOUND = -2,
};

// Packs a four-character code, first character in the highest byte: FourCC("Look") is 0x4C6F6F6B.
constexpr uint32 FourCC(const char (&code)[5])
{
    uint32 packed = 0;
    for (int i = 0; i < 4; ++i)
        packed = packed << 8 | static_cast<uint8>(code[i]);
    return packed;
}
