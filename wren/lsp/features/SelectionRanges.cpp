#include "wren/lsp/features/SelectionRanges.h"

#include "resolve/Tokens.h"
#include "wren/lsp/session/Subject.h"

#include <algorithm>
#include <iterator>

namespace wren::lsp {

namespace {

using resolve::kNone;

class Selections {
public:
    Selections(const resolve::Tokens& tokens, size_t length, size_t offset)
        : tokens(tokens), length(length), offset(offset)
    {
    }

    std::vector<std::pair<size_t, size_t>> All()
    {
        const size_t first = tokens.FirstFrom(offset);
        for (const size_t token : {first, first - 1}) // in front of a word counts, and behind it
            if (Touches(token) && tokens[token].kind != tagging::Token::kMark) {
                Add(tokens[token].offset, tokens[token].End());
                break;
            }
        for (size_t open = OuterOf(first);; open = tokens[open].parent) {
            AddParts(open);
            if (open == kNone)
                break;
            const size_t close = tokens[open].match;
            if (close == kNone)
                continue;
            Add(tokens[open].End(), tokens[close].offset);
            Add(tokens[open].offset, tokens[close].End());
        }
        Add(0, length);
        return std::move(found);
    }

private:
    bool Touches(size_t token) const
    {
        return token < tokens.Count() && tokens[token].offset <= offset && offset <= tokens[token].End();
    }

    // The bracket around the place, which is before this token.
    size_t OuterOf(size_t first) const
    {
        if (first < tokens.Count() && !IsClosing(first))
            return tokens[first].parent;
        if (first < tokens.Count() && tokens[first].match != kNone)
            return tokens[first].match;
        if (first == 0 || first > tokens.Count())
            return kNone;
        const resolve::Token& last = tokens[first - 1];
        return IsOpening(first - 1) ? first - 1 : last.parent;
    }

    bool IsOpening(size_t token) const
    {
        return tokens[token].IsMark("(") || tokens[token].IsMark("[") || tokens[token].IsMark("{");
    }
    bool IsClosing(size_t token) const
    {
        return tokens[token].IsMark(")") || tokens[token].IsMark("]") || tokens[token].IsMark("}");
    }

    // Behind a token on the same level of brackets; its other end for a bracket.
    size_t Next(size_t token) const
    {
        return IsOpening(token) && tokens[token].match != kNone ? tokens[token].match + 1 : token + 1;
    }

    // The part between commas, then the statement, around the place, in a bracket or at the top.
    void AddParts(size_t open)
    {
        const size_t begin = open == kNone ? 0 : open + 1;
        const size_t end = open == kNone || tokens[open].match == kNone ? tokens.Count() : tokens[open].match;
        const bool isBlock = open == kNone || tokens[open].IsMark("{");
        size_t part = begin;
        for (size_t at = begin; at < end; at = Next(at)) {
            const bool ends = IsEnd(at, end, isBlock);
            if (!ends)
                continue;
            const size_t last = Next(at) - 1;
            const bool isComma = tokens[at].IsMark(",");
            if (isComma ? at > part : last + 1 > part)
                AddIfAround(part, isComma ? at - 1 : last);
            part = last + 1;
        }
        if (part < end)
            AddIfAround(part, end - 1);
    }

    bool IsEnd(size_t at, size_t end, bool isBlock) const
    {
        if (!isBlock)
            return tokens[at].IsMark(",") || tokens[at].IsMark(";");
        if (tokens[at].IsMark(";"))
            return true;
        if (!tokens[at].IsMark("{") || tokens[at].match == kNone)
            return false;
        const size_t next = tokens[at].match + 1; // "} else", "} while", "};", "} x;" go on
        const resolve::Token& token = tokens[next];
        return next >= end || !(token.IsMark(";") || token.IsMark(",") || token.IsMark(")") || token.Is("else") ||
                                token.Is("while") || token.Is("catch"));
    }

    void AddIfAround(size_t first, size_t last)
    {
        if (tokens[first].offset <= offset && offset <= tokens[last].End())
            Add(tokens[first].offset, tokens[last].End());
    }

    void Add(size_t start, size_t end)
    {
        if (start > offset || end < offset || start >= end)
            return;
        if (found.empty() ||
            (start <= found.back().first && end >= found.back().second && std::pair(start, end) != found.back()))
            found.emplace_back(start, end);
    }

    const resolve::Tokens& tokens;
    const size_t length;
    const size_t offset;
    std::vector<std::pair<size_t, size_t>> found;
};

// The innermost ones and the whole text: clients fail to read what is nested as deeply as a text can be.
void LimitDepth(std::vector<std::pair<size_t, size_t>>& selections)
{
    constexpr std::ptrdiff_t kMost = 200;
    if (std::ssize(selections) > kMost)
        selections.erase(selections.begin() + kMost - 1, selections.end() - 1);
}

Json Chain(std::vector<std::pair<size_t, size_t>> selections, const Text& text, Encoding encoding, size_t offset)
{
    LimitDepth(selections);
    Json chain;
    for (auto each = selections.rbegin(); each != selections.rend(); ++each) {
        Json range = {{"range", text.RangeOf(each->first, each->second, encoding)}};
        if (!chain.is_null())
            range["parent"] = std::move(chain);
        chain = std::move(range);
    }
    return chain.is_null() ? Json{{"range", text.RangeOf(offset, offset, encoding)}} : chain;
}

} // namespace

void from_json(const Json& json, SelectionRangeParams& params)
{
    params.uri = Member<std::string>(Member<Json>(json, "textDocument"), "uri");
    params.positions = Member<std::vector<Position>>(json, "positions");
}

std::vector<std::pair<size_t, size_t>> SelectionsAround(const std::string& text, size_t offset)
{
    return Selections(resolve::Tokens(text), text.size(), offset).All();
}

Json SelectionRanges(const SelectionRangeParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    Json ranges = Json::array();
    if (!subject.IsSource())
        return ranges;
    const std::string& content = subject.Text().Content();
    const resolve::Tokens tokens(content);
    for (const Position position : params.positions) {
        const size_t offset = subject.Text().OffsetOf(position, subject.Encoding());
        ranges.push_back(
            Chain(Selections(tokens, content.size(), offset).All(), subject.Text(), subject.Encoding(), offset));
    }
    return ranges;
}

} // namespace wren::lsp
