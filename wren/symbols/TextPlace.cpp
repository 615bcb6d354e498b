#include "wren/symbols/TextPlace.h"

#include "base/Identifier.h"

#include <algorithm>

namespace wren {

namespace {

using Sort = TextPlace::Sort;

// Whether the offset is in a comment that begins in this part of a text, which has nothing but blanks and comments.
bool IsInComment(std::string_view gap)
{
    for (size_t at = 0; at + 1 < gap.size();) {
        const std::string_view rest = gap.substr(at);
        if (!rest.starts_with("//") && !rest.starts_with("/*")) {
            ++at;
            continue;
        }
        const bool isLine = rest[1] == '/';
        const size_t end = gap.find(isLine ? "\n" : "*/", at + 2);
        if (end == std::string_view::npos)
            return true;
        at = end + (isLine ? 1 : 2);
    }
    return false;
}

// Of "#include <a/b", from behind the delimiter to the end of the line.
bool FindInclude(std::string_view text, const resolve::PlacedDirective& placed, size_t offset, TextPlace& place)
{
    const std::string_view name = tagging::Directive(placed.text).name;
    if (name != "include" && name != "import" && name != "include_next")
        return false;
    const size_t open = text.find_first_of("<\"", placed.offset);
    if (open == std::string_view::npos || open >= offset || open >= placed.offset + placed.text.size())
        return false;
    place.isAngled = text[open] == '<';
    const size_t close = std::min(text.find_first_of(">\"\r\n", open + 1), text.size());
    if (close < offset)
        return false;
    const std::string_view written = text.substr(open + 1, offset - open - 1);
    const size_t slash = written.rfind('/');
    place.directory = slash == std::string_view::npos ? "" : std::string(written.substr(0, slash + 1));
    place.start = open + 1 + place.directory.size();
    place.end = close;
    return true;
}

bool IsInMessage(const resolve::Tokens& tokens, size_t before)
{
    const size_t open = tokens[before].parent;
    if (open == resolve::kNone || !tokens[open].IsMark("[") || before == open)
        return false;
    const bool isIndex =
        open > 0 && (tokens[open - 1].IsWord() || tokens[open - 1].IsMark("]") || tokens[open - 1].IsMark(")"));
    return !isIndex || tokens[open - 1].Is("return");
}

Sort SortBehind(const resolve::Tokens& tokens, size_t before)
{
    const resolve::Token& sign = tokens[before];
    if (sign.IsMark(".") || sign.IsMark("->"))
        return tokens[before - 1].IsMark(".") ? Sort::Unqualified : Sort::Member; // not "..."
    if (sign.IsMark("::"))
        return Sort::Qualified;
    return IsInMessage(tokens, before) ? Sort::Message : Sort::Unqualified;
}

} // namespace

TextPlace PlaceIn(std::string_view text, const resolve::Tokens& tokens, size_t offset)
{
    TextPlace place;
    place.start = place.end = offset;
    const resolve::PlacedDirective* const directive = tokens.DirectiveAt(offset);
    if (directive != nullptr && FindInclude(text, *directive, offset, place)) {
        place.sort = Sort::Include;
        return place;
    }
    const std::string_view name = base::IdentifierAround(text, offset);
    place.start = static_cast<size_t>(name.data() - text.data());
    place.end = place.start + name.size();
    if (directive != nullptr)
        return place;
    const size_t next = tokens.FirstFrom(place.start);
    const size_t before = next - 1; // none, which is a token without text, at the beginning
    const resolve::Token& last = tokens[before];
    const size_t end = next == 0 ? 0 : last.End();
    const bool isInToken = next != 0 && end > place.start;
    if (isInToken ? last.kind != tagging::Token::kWord : IsInComment(text.substr(end, place.start - end)))
        place.sort = Sort::Nothing;
    else if (next != 0)
        place.sort = SortBehind(tokens, before);
    return place;
}

} // namespace wren
