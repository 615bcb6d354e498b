// Removes tokens from a source, for a parser that does not know them.
#pragma once

#include "tagging/tokens/SourceTokens.h"

#include <string>
#include <string_view>

namespace tagging {

// All other characters and all line breaks keep their places.
class RestOfSource {
public:
    // Tokens must be parts of 'text', which is borrowed.
    explicit RestOfSource(std::string_view text) : text(text), rest(text) {}

    void TakeOut(const Token& token);
    // Removes the token and writes something shorter in its place.
    void Replace(const Token& token, std::string_view replacement);

    std::string& Text() { return rest; }

private:
    size_t PlaceOf(const Token& token) const { return static_cast<size_t>(token.text.data() - text.data()); }

    std::string_view text;
    std::string rest;
};

} // namespace tagging
