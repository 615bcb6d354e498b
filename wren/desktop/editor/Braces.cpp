#include "wren/desktop/editor/Braces.h"

#include <Qsci/qsciscintillabase.h>

#include <cstdlib>
#include <string_view>

namespace wren::braces {

namespace {

using Sci = QsciScintillaBase;

constexpr std::string_view kOpening = "([{";
constexpr std::string_view kClosing = ")]}";
constexpr long kFarthest = 100'000; // bytes

struct Pair {
    char same;
    char other;
    int step; // towards the other
};

std::optional<Pair> PairOf(char c)
{
    const size_t opening = kOpening.find(c);
    if (opening != std::string_view::npos)
        return Pair{c, kClosing[opening], 1};
    const size_t closing = kClosing.find(c);
    if (closing != std::string_view::npos)
        return Pair{c, kOpening[closing], -1};
    return std::nullopt;
}

// What is not coloured yet has no style to compare. A little of it is coloured at once; where it is much, all braces
// count.
long ColouredTo(const ViewText& text, long brace)
{
    const long styled = text.Send(Sci::SCI_GETENDSTYLED);
    if (styled <= brace && brace - styled < kFarthest)
        text.Send(Sci::SCI_COLOURISE, styled, brace + 1);
    return text.Send(Sci::SCI_GETENDSTYLED);
}

} // namespace

bool IsBrace(const ViewText& text, long offset)
{
    return PairOf(text.CharAt(offset)).has_value();
}

Partner FindPartner(const ViewText& text, long brace)
{
    const Pair pair = *PairOf(text.CharAt(brace));
    const long styled = ColouredTo(text, brace);
    const int style = text.StyleAt(brace);
    long depth = 0;
    for (long at = brace; at >= 0 && at < text.Length(); at += pair.step) {
        if (std::abs(at - brace) > kFarthest)
            return {std::nullopt, true};
        const char c = text.CharAt(at);
        if ((c != pair.same && c != pair.other) || (brace < styled && at < styled && text.StyleAt(at) != style))
            continue;
        depth += c == pair.same ? 1 : -1;
        if (depth == 0)
            return {at, false};
    }
    return {};
}

} // namespace wren::braces
