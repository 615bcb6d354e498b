#include "wren/script/Utf8.h"

namespace wren {

namespace {

// The smallest code point that needs so many bytes: a shorter one written with them is not valid.
constexpr unsigned kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};

long AnnouncedLength(unsigned char first)
{
    if (first < 0x80)
        return 1;
    if (first >= 0xc2 && first <= 0xdf)
        return 2;
    if (first >= 0xe0 && first <= 0xef)
        return 3;
    return first >= 0xf0 && first <= 0xf4 ? 4 : 0;
}

// The length of the valid character at the beginning; 0 when there is none.
long ValidLength(std::string_view text)
{
    const long length = text.empty() ? 0 : AnnouncedLength(static_cast<unsigned char>(text[0]));
    if (length <= 1)
        return length;
    if (length > static_cast<long>(text.size()))
        return 0;
    unsigned point = static_cast<unsigned char>(text[0]) & (0x7f >> length);
    for (long i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xc0) != 0x80)
            return 0;
        point = point << 6 | (byte & 0x3f);
    }
    const bool surrogate = point >= 0xd800 && point <= 0xdfff;
    return point < kSmallest[length] || point > 0x10ffff || surrogate ? 0 : length;
}

} // namespace

long CharacterLength(std::string_view text)
{
    const long valid = ValidLength(text);
    return valid == 0 && !text.empty() ? 1 : valid;
}

long CountCharacters(std::string_view text)
{
    long count = 0;
    for (; !text.empty(); ++count)
        text.remove_prefix(CharacterLength(text));
    return count;
}

std::string ValidUtf8(std::string_view text)
{
    std::string valid;
    valid.reserve(text.size());
    while (!text.empty()) {
        const long length = ValidLength(text);
        if (length == 0)
            valid += "\xef\xbf\xbd";
        else
            valid += text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return valid;
}

} // namespace wren
