#include "scan/PatternScan.h"

#include "scan/ContextScan.h"
#include "scan/NameExtent.h"
#include "scan/Predicates.h"
#include "scan/SelectorAssembly.h"
#include "scan/Text.h"

namespace scan {

namespace {

// What the word at 'offset' runs into on the right says which kind it is; the context on the left counts only when the
// text ends with the word. So an argument of a message is looked up as a plain word, and "set|Object:" as a
// selector wherever it stands.
Context::Kind KindByTextAhead(const Text& text, long offset, Context::Kind byTextBehind)
{
    const long length = text.Length();
    for (; offset < length; ++offset) {
        const char ch = text.At(offset);
        if (ch == ':' && text.At(offset + 1) != ':')
            return Context::Kind::Message;
        if (!IsIDChar(ch))
            return Context::Kind::Name;
    }
    return byTextBehind;
}

// A name has no greatest length, unlike a selector or a selection: generated ones are looked up and completed whole.
std::optional<Pattern> NameBetween(const Text& text, long start, long end, long selStart)
{
    if (start >= end || start > selStart)
        return std::nullopt;
    const std::string name = StripStd(text.Range(start, end));
    return Pattern{end - static_cast<long>(name.length()), end, name}; // a stripped "std::" stays in front of it
}

} // namespace

std::optional<Pattern> PatternForLookup(const Text& text, long selStart, long selEnd)
{
    if (!IsScannable(text, selStart, selEnd))
        return std::nullopt;
    Context context = ContextScan().Run(text, selEnd);
    if (context.kind != Context::Kind::Name)
        context.kind = KindByTextAhead(text, selEnd, context.kind);
    if (context.kind == Context::Kind::Message)
        return SelectorAssembly(text, context.start).ForLookup();
    const long end = NameEnd(text, selEnd);
    return NameBetween(text, NameStart(text, end), end, selStart);
}

std::optional<Pattern> PatternForCompletion(const Text& text, long selStart, long selEnd)
{
    if (!IsScannable(text, selStart, selEnd))
        return std::nullopt;
    const Context context = ContextScan().Run(text, selEnd);
    if (context.kind == Context::Kind::Message)
        return SelectorAssembly(text, context.start).ForCompletion(selEnd);
    return NameBetween(text, NameStart(text, selEnd), selEnd, selStart);
}

} // namespace scan
