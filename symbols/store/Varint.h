// Numbers in one to ten bytes, seven bits in each, the lowest first.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace symbols {

inline void PutVarint(std::string& out, std::uint64_t value)
{
    for (; value >= 0x80; value >>= 7)
        out.push_back(static_cast<char>(value | 0x80));
    out.push_back(static_cast<char>(value));
}

// Reads numbers from bytes that may be damaged: they end early, but never out of bounds.
class VarintReader {
public:
    explicit VarintReader(std::string_view bytes) : at(bytes.data()), end(bytes.data() + bytes.size()) {}

    bool AtEnd() const { return at == end; }
    const char* Place() const { return at; }
    bool Failed() const { return failed; } // it was asked for more than there is

    std::uint8_t Byte()
    {
        if (at == end) {
            failed = true;
            return 0;
        }
        return static_cast<std::uint8_t>(*at++);
    }

    std::uint64_t Long()
    {
        if (at != end && (*at & 0x80) == 0)
            return static_cast<std::uint8_t>(*at++);
        std::uint64_t value = 0;
        for (unsigned shift = 0; shift < 64; shift += 7) {
            const std::uint8_t byte = Byte();
            value |= std::uint64_t(byte & 0x7f) << shift;
            if (byte < 0x80)
                return value;
        }
        failed = true;
        return value;
    }

    std::uint32_t Number() { return static_cast<std::uint32_t>(Long()); }

    std::string_view Bytes(std::uint64_t count)
    {
        if (count > static_cast<std::uint64_t>(end - at)) {
            failed = true;
            count = 0;
        }
        const std::string_view bytes(at, count);
        at += count;
        return bytes;
    }

private:
    const char* at;
    const char* end;
    bool failed = false;
};

// Rising numbers: the first one, then differences.
class RisingNumbers {
public:
    explicit RisingNumbers(std::string_view bytes) : reader(bytes) {}

    bool Next(std::uint32_t* value)
    {
        if (reader.AtEnd())
            return false;
        *value = last += reader.Number();
        return !reader.Failed();
    }

private:
    VarintReader reader;
    std::uint32_t last = 0;
};

} // namespace symbols
