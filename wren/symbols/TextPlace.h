// What sort of place a cursor is at.
#pragma once

#include "resolve/Tokens.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace wren {

struct TextPlace {
    enum class Sort {
        Nothing,    // in a comment or a string: names mean nothing
        Include,    // in the name of an #include
        Member,     // behind "." or "->"
        Qualified,  // behind "::"
        Message,    // of Objective-C: behind its receiver
        Unqualified // elsewhere in code
    };
    Sort sort = Sort::Unqualified;
    size_t start = 0;      // bytes: of the word at the place, or the place; in an #include behind the last "/"
    size_t end = 0;        // of the word
    std::string directory; // of an #include, with its last "/": "linux/"
    bool isAngled = false; // an #include of this form
};

TextPlace PlaceIn(std::string_view text, const resolve::Tokens& tokens, size_t offset);

} // namespace wren
