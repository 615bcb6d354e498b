#include "wren/script/Utf8.h"

#include "vetch/display/Utf8.h"

namespace wren {

std::string ValidUtf8(std::string_view text)
{
    std::string valid;
    valid.reserve(text.size());
    while (!text.empty()) {
        const size_t length = vetch::CodePointLength(text);
        const bool stray = length == 1 && static_cast<unsigned char>(text[0]) >= 0x80;
        valid += stray ? std::string_view("\xef\xbf\xbd") : text.substr(0, length);
        text.remove_prefix(length);
    }
    return valid;
}

} // namespace wren
