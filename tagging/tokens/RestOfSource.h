// A source whose tokens are taken out one by one, for a parser that does not know them.
#pragma once

#include "tagging/tokens/SourceTokens.h"

#include <string>
#include <string_view>

namespace tagging {

// Every other character keeps its place, and so do line breaks.
class RestOfSource {
public:
    // The tokens given are parts of 'text', which is borrowed.
    explicit RestOfSource(std::string_view text) : text(text), rest(text) {}

    void TakeOut(const Token& token);
    // Takes it out and writes something shorter at its place.
    void Replace(const Token& token, std::string_view replacement);

    std::string& Text() { return rest; }

private:
    size_t PlaceOf(const Token& token) const { return static_cast<size_t>(token.text.data() - text.data()); }

    std::string_view text;
    std::string rest;
};

} // namespace tagging
