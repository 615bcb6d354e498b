#include "wren/lsp/features/Hover.h"

#include "resolve/ParsedText.h"
#include "tagging/tokens/SourceTokens.h"
#include "wren/lsp/features/Comments.h"
#include "wren/lsp/features/Meant.h"
#include "wren/lsp/features/PlainValue.h"
#include "wren/symbols/ShownNames.h"

#include <algorithm>
#include <set>

namespace wren::lsp {

namespace {

using tagging::SymbolKind;

constexpr size_t kMostCandidates = 100;
constexpr size_t kLongestDeclaration = 1500; // bytes
constexpr size_t kMostEnumerators = 2000;

struct Card { // what is shown
    std::string declaration;
    std::string scope;
    std::string comment;
    std::string value;
    std::string place; // "shape.h:12"
    size_t others = 0; // other things that it may be
    bool isFoundByName = false;
};

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
                                           const Text& text)
{
    std::optional<long long> value = -1;
    size_t count = 0;
    for (const symbols::Symbol& symbol : all) {
        if (symbol.kind != SymbolKind::Enumerator || symbol.scope != wanted.scope || ++count > kMostEnumerators)
            continue;
        const DeclarationRange range = RangeOfDeclaration(symbol, text);
        const std::string_view written = std::string_view(text.Content()).substr(range.start, range.end - range.start);
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

std::string ValueOf(const resolve::Answer& answer, std::string_view declaration, const Text& text,
                    const Subject& subject)
{
    std::optional<long long> value;
    if (answer.symbol.kind == SymbolKind::Macro)
        value = PlainValue(BodyOfMacro(declaration, answer.symbol));
    else if (answer.symbol.kind == SymbolKind::Enumerator && answer.symbol.file < UINT32_MAX)
        value = ValueOfEnumerator(answer.symbol, subject.Snapshot().OfFile(answer.symbol.file).found, text);
    return value ? std::to_string(*value) : "";
}

size_t OtherThings(const std::vector<resolve::Answer>& answers)
{
    std::set<size_t> things;
    for (const resolve::Answer& each : answers)
        things.insert(each.entity);
    return things.size() - 1;
}

Card CardOf(const resolve::Answer& answer, const Subject& subject)
{
    Card card;
    const TextPointer text = subject.TextOf(answer.path);
    if (text == nullptr)
        return card;
    const DeclarationRange range = RangeOfDeclaration(answer.symbol, *text, answer.offset);
    const std::string_view declaration = std::string_view(text->Content()).substr(range.start, range.end - range.start);
    card.declaration = Shown(declaration, answer.symbol.kind);
    card.scope = WithoutMadeNames(std::string(answer.symbol.scope));
    card.comment = CommentOf(range, *text);
    card.value = ValueOf(answer, declaration, *text, subject);
    card.place = answer.path + ":" + std::to_string(text->SourceLineAt(range.nameStart));
    return card;
}

// The first declaration of the best thing that has a comment; else the first one.
Card BestCard(const std::vector<resolve::Answer>& answers, const Subject& subject)
{
    Card best;
    for (const resolve::Answer& each : answers) {
        if (each.entity != answers.front().entity)
            break;
        Card card = CardOf(each, subject);
        if (!card.comment.empty() || best.declaration.empty())
            best = card;
        if (!best.comment.empty())
            break;
    }
    best.others = OtherThings(answers);
    best.isFoundByName = answers.front().how == resolve::How::Name;
    return best;
}

const char* LanguageOf(const Subject& subject)
{
    const resolve::ParsedTextPointer parsed = subject.Parsed();
    if (parsed->IsObjectiveC())
        return parsed->IsCplusplus() ? "objective-cpp" : "objective-c";
    return parsed->IsCplusplus() ? "cpp" : "c";
}

// Each line of the comment stays one.
std::string CommentAsMarkdown(const std::string& comment)
{
    std::string text;
    for (const char c : comment) {
        const bool atStart = text.empty() || text.back() == '\n';
        if (c == '<' || c == '*' || c == '\\' ||
            (atStart && (c == '#' || c == '-' || c == '+' || c == '>' || c == '=')))
            text += '\\';
        text += c == '\n' ? "  \n" : std::string(1, c);
    }
    return text;
}

std::string TextOfCard(const Card& card, const char* language)
{
    const bool isMarkdown = language != nullptr;
    std::string text;
    const auto add = [&](const std::string& part) {
        if (!part.empty())
            text += (text.empty() ? "" : "\n\n") + part;
    };
    std::string code = card.scope.empty() ? "" : "// in " + card.scope + "\n";
    code += card.declaration;
    if (!card.value.empty())
        code += "\n// = " + card.value;
    const std::string fence = code.find("```") == std::string::npos ? "```" : "~~~~";
    if (!card.declaration.empty())
        add(isMarkdown ? fence + language + "\n" + code + "\n" + fence : code);
    add(isMarkdown ? CommentAsMarkdown(card.comment) : card.comment);
    add(isMarkdown && card.place.find('`') == std::string::npos ? "`" + card.place + "`" : card.place);
    if (card.others > 0)
        add("and " + std::to_string(card.others) + " more");
    if (card.isFoundByName)
        add("found by its name");
    return text;
}

} // namespace

Json Hover(const TextDocumentPositionParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    if (!subject.IsSource())
        return nullptr;
    const resolve::Place place = subject.PlaceAt(params.position);
    resolve::Answers answers = subject.Resolver().Meanings(place, subject.LimitsOf(kMostCandidates));
    std::erase_if(answers.found, [](const resolve::Answer& each) { return !each.isMeant; });
    if (answers.found.empty())
        return nullptr;
    Card card;
    if (answers.found.front().IsFile())
        card.place = answers.found.front().path;
    else
        card = BestCard(answers.found, subject);
    const bool isMarkdown =
        context.client.FirstOf("textDocument/hover/contentFormat", {"markdown", "plaintext"}) == "markdown";
    const ByteRange name = NameAt(subject.Text(), place.offset, answers);
    return {{"contents",
             {{"kind", isMarkdown ? "markdown" : "plaintext"},
              {"value", TextOfCard(card, isMarkdown ? LanguageOf(subject) : nullptr)}}},
            {"range", subject.Text().RangeOf(name.start, name.end, subject.Encoding())}};
}

} // namespace wren::lsp
