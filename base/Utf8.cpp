#include "base/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utf8.h>

namespace base {

size_t CodePointLength(std::string_view text)
{
    constexpr size_t kLongest = 4;
    if (!IsStray(text.substr(0, 1)))
        return 1;
    // Shorter prefixes are not valid, so the first valid one is one code point.
    for (size_t length = 2; length <= std::min(kLongest, text.size()); ++length)
        if (utf8::is_valid(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length)))
            return length;
    return 1;
}

bool IsControl(std::string_view character)
{
    const auto first = static_cast<unsigned char>(character.front());
    const auto last = static_cast<unsigned char>(character.back());
    if (character.size() == 1)
        return first < 0x20 || (first >= 0x7f && first < 0xa0);
    return character.size() == 2 && first == 0xc2 && last < 0xa0;
}

size_t CountCodePoints(std::string_view text)
{
    size_t count = 0;
    for (; !text.empty(); ++count)
        text.remove_prefix(CodePointLength(text));
    return count;
}

size_t AsciiPrefix(std::string_view text)
{
    constexpr std::uint64_t kHighBits = 0x8080'8080'8080'8080;
    size_t length = 0;
    for (std::uint64_t word = 0; length + sizeof word <= text.size(); length += sizeof word) {
        std::memcpy(&word, text.data() + length, sizeof word);
        if ((word & kHighBits) != 0)
            break;
    }
    while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80)
        ++length;
    return length;
}

bool IsAscii(std::string_view text)
{
    return AsciiPrefix(text) == text.size();
}

bool IsValidUtf8(std::string_view text)
{
    while (!text.empty()) {
        text.remove_prefix(AsciiPrefix(text));
        if (text.empty())
            break;
        const std::string_view character = FirstCharacter(text);
        if (IsStray(character))
            return false;
        text.remove_prefix(character.size());
    }
    return true;
}

std::string ValidUtf8(std::string_view text)
{
    std::string valid;
    valid.reserve(text.size());
    while (!text.empty()) {
        const std::string_view character = FirstCharacter(text);
        valid += IsStray(character) ? std::string_view("\xef\xbf\xbd") : character;
        text.remove_prefix(character.size());
    }
    return valid;
}

} // namespace base
