#include "plugin/PluginInterface.h"
#include "scan/ContextScan.h"
#include "scan/DocumentText.h"
#include "scan/NameExtent.h"
#include "scan/Pattern.h"
#include "scan/Predicates.h"
#include "scan/SelectionScanner.h"
#include "scan/SelectorAssembly.h"

#include <optional>

namespace {

using scan::Context;
using scan::Pattern;

// What the word at 'offset' runs into on the right says which kind it is; the context on the left counts only when the
// document ends with the word. So an argument of a message is looked up as a plain word, and "set|Object:" as a
// selector wherever it stands.
Context::Kind KindByTextAhead(PluginInterface* pi, long offset, Context::Kind byTextBehind)
{
    const long length = pi->TextLength();
    for (; offset < length; ++offset) {
        const char ch = pi->CharAt(offset);
        if (ch == ':' && pi->CharAt(offset + 1) != ':')
            return Context::Kind::Message;
        if (!IsIDChar(ch))
            return Context::Kind::Name;
    }
    return byTextBehind;
}

// A name has no greatest length, unlike a selector or a selection: generated ones are looked up and completed whole.
std::optional<Pattern> NameBetween(PluginInterface* pi, long start, long end, long selStart)
{
    if (start >= end || start > selStart)
        return std::nullopt;
    const std::string name = StripStd(scan::TextBetween(pi, start, end));
    return Pattern{end - static_cast<long>(name.length()), end, name}; // a stripped "std::" stays in front of it
}

std::optional<Pattern> PatternForLookup(PluginInterface* pi, long selStart, long selEnd)
{
    Context context = scan::ContextScan().Run(pi, selEnd);
    if (context.kind != Context::Kind::Name)
        context.kind = KindByTextAhead(pi, selEnd, context.kind);
    if (context.kind == Context::Kind::Message)
        return scan::SelectorAssembly(pi, context.start).ForLookup();
    const long end = scan::NameEnd(pi, selEnd);
    return NameBetween(pi, scan::NameStart(pi, end), end, selStart);
}

std::optional<Pattern> PatternForCompletion(PluginInterface* pi, long selStart, long selEnd)
{
    const Context context = scan::ContextScan().Run(pi, selEnd);
    if (context.kind == Context::Kind::Message)
        return scan::SelectorAssembly(pi, context.start).ForCompletion(selEnd);
    return NameBetween(pi, scan::NameStart(pi, selEnd), selEnd, selStart);
}

} // namespace

bool ScanForSuggestionPattern(PluginInterface* pi, long selStart, long selEnd, long& start, long& end,
                              std::string& pattern, bool forCompletion)
{
    pattern.clear();
    if (!scan::IsScannable(pi, selStart, selEnd))
        return false;
    const std::optional<Pattern> found =
        forCompletion ? PatternForCompletion(pi, selStart, selEnd) : PatternForLookup(pi, selStart, selEnd);
    if (!found)
        return false;
    start = found->start;
    end = found->end;
    pattern = found->text;
    return true;
}
