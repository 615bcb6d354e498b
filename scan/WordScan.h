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

// The word before a caret, as key strokes compare it; all 0 when there is none.
struct TypedWord {
    long caret = 0;
    long start = 0;
    long length = 0;
};

// Whether a key that moved the caret forward made the same word longer.
bool WordGrew(const TypedWord& before, const TypedWord& now);

// The same, or that it began a word, wherever that starts.
bool WordBeganOrGrew(const TypedWord& before, const TypedWord& now);

// The word around a caret or a selection. None when the selection spans lines, exceeds 1024 bytes or is not part of one
// word.
std::optional<std::string> WordAround(const Text& text, long selStart, long selEnd);

} // namespace scan
