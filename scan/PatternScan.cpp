#include "scan/PatternScan.h"

#include "scan/ContextScan.h"
#include "scan/NameExtent.h"
#include "scan/Predicates.h"
#include "scan/SelectorAssembly.h"
#include "scan/Text.h"

namespace scan {

namespace {

// The character behind the word at 'offset' decides the kind; the context on the left counts only if the text ends with
// the word. So an argument of a message is a plain word, and "set|Object:" is always a selector.
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

// Unlike selectors and selections, names have no maximum length: generated ones are looked up and completed whole.
std::optional<Pattern> NameBetween(const Text& text, long start, long end, long selStart)
{
    if (start >= end || start > selStart)
        return std::nullopt;
    const std::string name = StripStd(text.Range(start, end));
    return Pattern{end - static_cast<long>(name.length()), end, name}; // the range excludes a stripped "std::"
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
