// The word at an offset: identifiers with the colons in and around them.
#pragma once

#include <optional>
#include <string>

namespace scan {

class Text;

// A word's range.
struct WordPlace {
    long start;
    long length;
};

// The word that ends at 'caret'; none when the caret is before or inside a word. A word that begins the text has the
// start -1 and a length one too great.
std::optional<WordPlace> WordBefore(const Text& text, long caret);

// The word around a caret or a selection. None when the selection spans lines, exceeds 1024 bytes or is not part of one
// word.
std::optional<std::string> WordAround(const Text& text, long selStart, long selEnd);

} // namespace scan
