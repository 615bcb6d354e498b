#include "wren/symbols/MeaningCard.h"

#include "tagging/tokens/SourceTokens.h"
#include "wren/symbols/Comments.h"
#include "wren/symbols/DeclarationRange.h"
#include "wren/symbols/PlainValue.h"
#include "wren/symbols/ShownNames.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace wren {

namespace {

using tagging::SymbolKind;

constexpr size_t kLongestDeclaration = 1500; // bytes
constexpr size_t kMostEnumerators = 2000;

bool HasBody(SymbolKind kind)
{
    return kind == SymbolKind::Function || kind == SymbolKind::Class || kind == SymbolKind::Struct ||
           kind == SymbolKind::Union || kind == SymbolKind::Enum || kind == SymbolKind::Namespace ||
           kind == SymbolKind::InstanceMethod || kind == SymbolKind::ClassMethod || kind == SymbolKind::Variable ||
           kind == SymbolKind::Local;
}

// Without the body, or the list that initialises it.
std::string_view Head(std::string_view declaration, SymbolKind kind)
{
    if (!HasBody(kind))
        return declaration;
    tagging::SourceTokens source(declaration);
    int depth = 0;
    for (tagging::Token token; source.Next(token);) {
        depth += token.Is('(') || token.Is('[') ? 1 : token.Is(')') || token.Is(']') ? -1 : 0;
        const size_t at = static_cast<size_t>(token.text.data() - declaration.data());
        if (depth <= 0 && token.Is('{') && at > 0) {
            declaration = declaration.substr(0, at);
            break;
        }
    }
    return declaration;
}

std::string Shown(std::string_view declaration, SymbolKind kind)
{
    std::string_view head = Head(declaration, kind);
    const bool isCut = head.size() > kLongestDeclaration;
    if (isCut)
        head = head.substr(0, head.rfind('\n', kLongestDeclaration));
    std::string shown(head.substr(0, std::min(head.size(), kLongestDeclaration)));
    while (!shown.empty() && std::string_view(" \t\r\n;").find(shown.back()) != std::string_view::npos)
        shown.pop_back();
    std::erase(shown, '\r');
    return isCut ? shown + "\n..." : shown;
}

// "B" and "B = 2": what stands behind "=", of an enumerator or a macro.
std::string_view Assigned(std::string_view declaration)
{
    const size_t sign = declaration.find('=');
    return sign == std::string_view::npos ? std::string_view() : declaration.substr(sign + 1);
}

// Of the enumerator, from those before it in its enumeration.
std::optional<long long> ValueOfEnumerator(const symbols::Symbol& wanted, const std::vector<symbols::Symbol>& all,
                                           const SourceText& text)
{
    std::optional<long long> value = -1;
    size_t count = 0;
    for (const symbols::Symbol& symbol : all) {
        if (symbol.kind != SymbolKind::Enumerator || symbol.scope != wanted.scope || ++count > kMostEnumerators)
            continue;
        const DeclarationRange range = RangeOfDeclaration(symbol, text);
        const std::string_view written = text.Content().substr(range.start, range.end - range.start);
        const std::string_view given = Assigned(written);
        if (!given.empty())
            value = PlainValue(given);
        else if (value)
            ++*value;
        if (symbol.line == wanted.line && symbol.name == wanted.name)
            return value;
    }
    return std::nullopt;
}

std::string_view BodyOfMacro(std::string_view definition, const symbols::Symbol& macro)
{
    if (!macro.signature.empty())
        return "";
    const size_t name = definition.find(macro.name);
    return name == std::string_view::npos ? std::string_view() : definition.substr(name + macro.name.size());
}

bool EndsWithWord(std::string_view text, std::string_view word)
{
    const size_t last = text.find_last_not_of(" \t\r\n,;");
    text = text.substr(0, last + 1);
    if (!text.ends_with(word))
        return false;
    text.remove_suffix(word.size());
    return !text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '=');
}

std::string ValueOf(const resolve::Answer& answer, std::string_view declaration, const SourceText& text,
                    const symbols::Snapshot& snapshot)
{
    std::optional<long long> value;
    if (answer.symbol.kind == SymbolKind::Macro)
        value = PlainValue(BodyOfMacro(declaration, answer.symbol));
    else if (answer.symbol.kind == SymbolKind::Enumerator && answer.symbol.file < UINT32_MAX)
        value = ValueOfEnumerator(answer.symbol, snapshot.OfFile(answer.symbol.file).found, text);
    const std::string shown = value ? std::to_string(*value) : "";
    return EndsWithWord(declaration, shown) ? "" : shown; // it is read there
}

size_t OtherThings(const std::vector<resolve::Answer>& answers)
{
    std::set<size_t> things;
    for (const resolve::Answer& each : answers)
        things.insert(each.entity);
    return things.size() - 1;
}

MeaningCard CardOfOne(const resolve::Answer& answer, const symbols::Snapshot& snapshot, const SourceReader& read)
{
    MeaningCard card;
    const std::optional<SourceText> text = read(answer.path);
    if (!text)
        return card;
    const DeclarationRange range = RangeOfDeclaration(answer.symbol, *text, answer.offset);
    const std::string_view declaration = text->Content().substr(range.start, range.end - range.start);
    card.declaration = Shown(declaration, answer.symbol.kind);
    card.scope = WithoutMadeNames(std::string(answer.symbol.scope));
    card.comment = CommentOf(range, *text);
    card.value = ValueOf(answer, declaration, *text, snapshot);
    card.place = answer.path + ":" + std::to_string(text->LineAt(range.nameStart));
    return card;
}

} // namespace

std::optional<MeaningCard> CardOf(const std::vector<resolve::Answer>& answers, const symbols::Snapshot& snapshot,
                                  const SourceReader& read)
{
    std::vector<resolve::Answer> meant;
    std::ranges::copy_if(answers, std::back_inserter(meant), &resolve::Answer::isMeant);
    if (meant.empty())
        return std::nullopt;
    MeaningCard best;
    if (meant.front().IsFile()) {
        best.place = meant.front().path;
        return best;
    }
    for (const resolve::Answer& each : meant) {
        if (each.entity != meant.front().entity)
            break;
        MeaningCard card = CardOfOne(each, snapshot, read);
        if (!card.comment.empty() || best.declaration.empty())
            best = std::move(card);
        if (!best.comment.empty())
            break;
    }
    best.others = OtherThings(meant);
    best.isFoundByName = meant.front().how == resolve::How::Name;
    return best;
}

} // namespace wren
