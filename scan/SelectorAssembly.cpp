#include "scan/SelectorAssembly.h"

#include "scan/Text.h"

namespace scan {

std::optional<Pattern> SelectorAssembly::ForLookup()
{
    Assemble(text.Length());
    return Result();
}

std::optional<Pattern> SelectorAssembly::ForCompletion(long caret)
{
    Assemble(caret);
    selector += piece;
    return Result();
}

void SelectorAssembly::Assemble(long end)
{
    // The first offset is -1 without an identifier left of the caret: the text has '\0' there, which does not start a
    // piece.
    for (; offset < end; ++offset)
        if (!Step(text.At(offset)))
            return;
}

bool SelectorAssembly::Step(char ch)
{
    if (skipped.Takes(ch))
        return true;
    switch (ch) {
    case '"':
    case '\'':
    case '(':
    case '[':
        SkipFrom(ch);
        return true;
    case ':':
        EndPiece();
        return true;
    case ']':
    case ')':
    case '}':
    case ';':
        return false;
    default:
        if (IsIDChar(ch))
            piece += ch;
        else
            piece.clear();
        return true;
    }
}

// Skips the literal or the bracketed group that begins with 'ch': an argument, or the type of one.
void SelectorAssembly::SkipFrom(char ch)
{
    piece.clear();
    skipped.Enter(ch, offset);
}

void SelectorAssembly::EndPiece()
{
    selector.append(piece).append(1, ':');
    piece.clear();
    start = offset + 1;
}

// The pieces are scattered over the message, so the range only gives the selector's length and may begin before the
// text.
std::optional<Pattern> SelectorAssembly::Result() const
{
    constexpr size_t kLongestSelector = 1024;
    if (selector.length() > kLongestSelector)
        return std::nullopt;
    return Pattern{start - static_cast<long>(selector.length()), start, selector};
}

} // namespace scan
