#include "scan/NameExtent.h"

#include "scan/Predicates.h"
#include "scan/SkippedGroup.h"
#include "scan/Text.h"

namespace scan {

namespace {

bool ClosesArguments(char ch, char)
{
    return ch == '>';
}

// The length of the colon at 'offset' in the name that ends at 'end': two for a scope, none when it does not belong to
// the name.
long ColonsOfName(const Text& text, long offset, long end)
{
    const char left = text.At(offset - 1);
    if (left == ':')
        return 2;
    // "foo:" alone is a piece of a selector; anywhere else a single colon belongs to a label or a "?:".
    return offset == end - 1 && IsIDChar(left) ? 1 : 0;
}

} // namespace

long NameEnd(const Text& text, long offset)
{
    const long length = text.Length();
    SkippedGroup arguments(ClosesArguments);
    for (; offset < length; ++offset) {
        const char ch = text.At(offset);
        if (arguments.Takes(ch) || IsIDChar(ch))
            continue;
        if (ch == '<')
            arguments.Enter(ch, offset);
        else if (ch != ':')
            break;
        else if (text.At(++offset) != ':') // behind a single colon, which may be the last character
            break;
    }
    // An unclosed '<' is a comparison. The name then ends one character before it: "count<n" gives "coun", and "i<n"
    // nothing.
    return arguments.IsOpen() ? arguments.EnteredAt() - 1 : offset;
}

long NameStart(const Text& text, long end)
{
    SkippedGroup arguments(BackwardBracketMatch);
    long offset = end - 1;
    for (long step; offset >= 0; offset -= step) {
        const char ch = text.At(offset);
        step = 1;
        if (arguments.Takes(ch) || IsIDChar(ch))
            continue;
        if (ch == '>') // also of "->", whose group ends at the next '<': "if (i<n) a->b" gives "i<n) a->b"
            arguments.Enter(ch, offset);
        else if (ch != ':' || (step = ColonsOfName(text, offset, end)) == 0)
            break;
    }
    return (arguments.IsOpen() ? arguments.EnteredAt() : offset) + 1;
}

} // namespace scan
