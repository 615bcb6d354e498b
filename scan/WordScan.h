// The word at a place: identifiers with the colons in and around them.
#pragma once

#include <optional>
#include <string>

namespace scan {

class Text;

// Where a word stands.
struct WordPlace {
    long start;
    long length;
};

// The word that ends at 'caret'; none when the caret is in front of a word or inside one. A word that begins the text
// has the start -1 and a length one too great.
std::optional<WordPlace> WordBefore(const Text& text, long caret);

// The word around a caret or a selection. None when the selection spans lines, is longer than 1024 or holds anything
// but a piece of one word.
std::optional<std::string> WordAround(const Text& text, long selStart, long selEnd);

} // namespace scan
