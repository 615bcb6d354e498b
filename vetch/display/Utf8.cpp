#include "vetch/display/Utf8.h"

#include <algorithm>

namespace vetch {

namespace {

bool IsContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// The length of a sequence that begins with 'lead'; 1 for an invalid lead byte.
size_t SequenceLength(unsigned char lead)
{
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    if (lead >= 0xF0 && lead <= 0xF4)
        return 4;
    return 1;
}

// The second byte can make a sequence invalid: overlong forms, surrogates and values beyond U+10FFFF.
bool MayFollow(unsigned char lead, unsigned char second)
{
    switch (lead) {
    case 0xE0:
        return second >= 0xA0;
    case 0xED:
        return second < 0xA0;
    case 0xF0:
        return second >= 0x90;
    case 0xF4:
        return second < 0x90;
    default:
        return true;
    }
}

} // namespace

size_t CodePointLength(std::string_view text)
{
    const size_t length = SequenceLength(static_cast<unsigned char>(text[0]));
    if (length == 1 || length > text.size())
        return 1;
    const bool whole = std::ranges::all_of(text.substr(1, length - 1), IsContinuation);
    return whole && MayFollow(static_cast<unsigned char>(text[0]), static_cast<unsigned char>(text[1])) ? length : 1;
}

size_t CountCodePoints(std::string_view text)
{
    size_t count = 0;
    for (; !text.empty(); ++count)
        text.remove_prefix(CodePointLength(text));
    return count;
}

} // namespace vetch
