#include "tagging/tokens/RestOfSource.h"

#include <algorithm>

namespace tagging {

void RestOfSource::TakeOut(const Token& token)
{
    const auto begin = rest.begin() + static_cast<std::ptrdiff_t>(PlaceOf(token));
    std::replace_if(
        begin, begin + static_cast<std::ptrdiff_t>(token.text.size()), [](char c) { return c != '\n' && c != '\r'; },
        ' ');
}

void RestOfSource::Replace(const Token& token, std::string_view replacement)
{
    TakeOut(token);
    rest.replace(PlaceOf(token), replacement.size(), replacement);
}

} // namespace tagging
