// The same name in the same text.
#include "resolve/ParsedText.h"
#include "wren/lsp/features/References.h"
#include "wren/lsp/features/UseRanges.h"
#include "wren/lsp/session/Subject.h"

namespace wren::lsp {

namespace {

using resolve::Tokens;

enum class HighlightKind { Text = 1, Read = 2, Write = 3 }; // the protocol's numbers

constexpr size_t kMostHighlights = 10'000;

bool AreTwo(const Tokens& tokens, size_t first, char mark)
{
    return tokens[first].Is(mark) && tokens[first + 1].Is(mark) && tokens.Touch(first, first + 1);
}

// "+=", "<<=" behind the operand.
bool IsAssignedBehind(const Tokens& tokens, size_t at)
{
    if (tokens.IsAssignment(at) || AreTwo(tokens, at, '+') || AreTwo(tokens, at, '-'))
        return true;
    const bool isShift = AreTwo(tokens, at, '<') || AreTwo(tokens, at, '>');
    const size_t sign = isShift ? at + 1 : at;
    constexpr std::string_view kSigns = "+-*/%&|^";
    const bool isSign = isShift || (tokens[at].text.size() == 1 && kSigns.find(tokens[at].text[0]) != kSigns.npos);
    return isSign && tokens[sign + 1].Is('=') && tokens.Touch(sign, sign + 1) && !AreTwo(tokens, sign + 1, '=');
}

// "s" of "s.list->head" for its last name.
size_t BeginOfChain(const Tokens& tokens, size_t word)
{
    while (word >= 2 && (tokens[word - 1].Is('.') || tokens[word - 1].text == "->" || tokens[word - 1].IsMark("::")) &&
           tokens[word - 2].IsWord())
        word -= 2;
    return word;
}

// "f(&x)": what is called may write to it.
bool IsPassedByAddress(const Tokens& tokens, size_t begin, size_t behind)
{
    if (begin < 2 || !tokens[begin - 1].Is('&') || !(tokens[behind].Is(',') || tokens[behind].Is(')')))
        return false;
    const size_t open = tokens[begin].parent;
    const bool isCall = open != resolve::kNone && open > 0 && tokens[open].Is('(') && tokens[open - 1].IsWord();
    return isCall && (tokens[begin - 2].Is('(') || tokens[begin - 2].Is(','));
}

bool IsInitialized(const Tokens& tokens, size_t word)
{
    size_t behind = word + 1;
    while (tokens[behind].Is('[') && tokens[behind].match != resolve::kNone && tokens[behind].match > behind)
        behind = tokens[behind].match + 1;
    return tokens.IsAssignment(behind) || tokens[behind].Is('{');
}

HighlightKind KindOf(const Tokens& tokens, size_t offset, bool isVariable)
{
    const size_t word = tokens.FirstFrom(offset);
    if (tokens[word].offset != offset)
        return HighlightKind::Text; // in a directive
    const size_t begin = BeginOfChain(tokens, word);
    const bool isCounted = begin >= 2 && (AreTwo(tokens, begin - 2, '+') || AreTwo(tokens, begin - 2, '-'));
    const bool isWritten = isCounted || IsAssignedBehind(tokens, word + 1) ||
                           IsPassedByAddress(tokens, begin, word + 1) || (isVariable && IsInitialized(tokens, word));
    return isWritten ? HighlightKind::Write : HighlightKind::Read;
}

bool DeclaresVariable(const std::vector<tagging::Symbol>& symbols, const resolve::Use& use)
{
    if (use.role != resolve::Use::Role::Definition && use.role != resolve::Use::Role::Declaration)
        return false;
    for (const tagging::Symbol& symbol : symbols)
        if (symbol.line == use.line && symbol.kind != tagging::SymbolKind::Variable &&
            symbol.kind != tagging::SymbolKind::Member)
            return false;
    return true; // or a local
}

} // namespace

Json Highlights(const TextDocumentPositionParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    Json highlights = Json::array();
    if (!subject.IsSource())
        return highlights;
    const resolve::ParsedTextPointer parsed = subject.Parsed();
    const auto add = [&](std::string_view text, const std::vector<resolve::Use>& uses) {
        UseRanges ranges(text, subject.Encoding());
        for (const resolve::Use& use : uses) {
            const size_t offset = ranges.OffsetOf(use);
            const HighlightKind kind = KindOf(parsed->tokens, offset, DeclaresVariable(parsed->parsed->symbols, use));
            highlights.push_back({{"range", ranges.Of(use)}, {"kind", static_cast<int>(kind)}});
        }
        return true;
    };
    subject.Resolver().ForEachUse(subject.PlaceAt(params.position), subject.LimitsOf(kMostHighlights),
                                  resolve::Resolver::Where::InText, add);
    return highlights;
}

} // namespace wren::lsp
