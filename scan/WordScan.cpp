#include "scan/WordScan.h"

#include "scan/Predicates.h"
#include "scan/Text.h"

namespace scan {

namespace {

// A colon always belongs to the word: "std::string" and "setObject:" are words, and so is the "b:c" of "a ? b:c".
long WordEnd(const Text& text, long offset)
{
    const long length = text.Length();
    while (offset < length && IsIDCharOrColon(text.At(offset)))
        ++offset;
    return offset;
}

// The start of the word that ends at 'end'; 0 for a word that begins the text.
long WordStart(const Text& text, long end)
{
    long offset = end - 1; // -1 before the text, which has '\0' there
    while (IsIDCharOrColon(text.At(offset))) {
        if (offset == 0)
            return 0;
        --offset;
    }
    return offset + 1;
}

// The same, but -1 for a word that begins the text. Key handling only compares the identifier's starts before and after
// a key and never reads there; it also takes the empty beginning of a document for an identifier.
long WordStartForKeys(const Text& text, long end)
{
    for (long offset = end - 1; offset >= 0; --offset)
        if (!IsIDCharOrColon(text.At(offset)))
            return offset + 1;
    return -1;
}

} // namespace

std::optional<WordPlace> WordBefore(const Text& text, long caret)
{
    // A caret is short and on one line; the text is asked as for a selection, and its result counts.
    if (!IsScannable(text, caret, caret))
        return std::nullopt;

    const long end = WordEnd(text, caret);
    const long start = WordStartForKeys(text, caret);
    // No maximum length: a user may type a name of thousands of characters.
    if (start >= end || end > caret)
        return std::nullopt;
    return WordPlace{start, end - start};
}

bool WordGrew(const TypedWord& before, const TypedWord& now)
{
    return now.caret > before.caret && now.start == before.start && now.length > before.length;
}

bool WordBeganOrGrew(const TypedWord& before, const TypedWord& now)
{
    return WordGrew(before, now) || (now.caret > before.caret && now.length == 1 && before.length == 0);
}

std::optional<std::string> WordAround(const Text& text, long selStart, long selEnd)
{
    if (!IsScannable(text, selStart, selEnd))
        return std::nullopt;

    // The word at the selection's end must reach back to the start. The selection's length is limited, the word's is
    // not: a long generated name is found.
    const long end = WordEnd(text, selEnd);
    const long start = WordStart(text, selEnd);
    if (start >= end || start > selStart)
        return std::nullopt;
    return text.Range(start, end);
}

} // namespace scan
