#include "wren/symbols/DeclarationRange.h"

#include "base/Identifier.h"
#include "tagging/tokens/SourceTokens.h"
#include "wren/symbols/NameColumn.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace wren {

namespace {

using Kind = tagging::SymbolKind;
using tagging::SourceTokens;
using tagging::Token;

constexpr unsigned kFarthest = 200;   // lines that a declaration may have moved
constexpr unsigned kLongestHead = 40; // lines before the name
constexpr size_t kMostTokens = 20'000;

bool IsTag(Kind kind)
{
    return kind == Kind::Struct || kind == Kind::Union || kind == Kind::Enum || kind == Kind::Class;
}

bool IsTagWord(const Token& token)
{
    return token.Is(std::string_view("struct")) || token.Is(std::string_view("union")) ||
           token.Is(std::string_view("enum")) || token.Is(std::string_view("class"));
}

bool IsFunction(Kind kind)
{
    return kind == Kind::Function || kind == Kind::InstanceMethod || kind == Kind::ClassMethod;
}

bool IsInList(Kind kind) // ends before a comma
{
    return kind == Kind::Enumerator || kind == Kind::Parameter || kind == Kind::TemplateParameter ||
           kind == Kind::MacroParameter;
}

bool EndsWithAtEnd(Kind kind)
{
    return kind == Kind::Interface || kind == Kind::Implementation || kind == Kind::Protocol || kind == Kind::Category;
}

std::vector<Token> TokensOf(std::string_view text)
{
    std::vector<Token> tokens;
    SourceTokens source(text);
    for (Token token; tokens.size() < kMostTokens && source.Next(token);)
        tokens.push_back(token);
    return tokens;
}

// How well an occurrence of the name fits as the declared one: "struct page *page;" has two.
int Fit(const std::vector<Token>& tokens, size_t i, const tagging::Symbol& symbol)
{
    static const Token kNone;
    const Token& before = i > 0 ? tokens[i - 1] : kNone;
    const Token& after = i + 1 < tokens.size() ? tokens[i + 1] : kNone;
    if (IsTag(symbol.kind))
        return IsTagWord(before) ? 2 : 1;
    if (IsTagWord(before))
        return 0;
    if (IsFunction(symbol.kind) || symbol.kind == Kind::Prototype)
        return after.Is('(') ? 2 : 1;
    const bool isType = after.kind == Token::kWord && !after.text.empty();
    return isType || after.Is('*') || after.Is('&') || after.Is('<') || after.Is('(') ? 1 : 2;
}

// In the line; nullopt when it does not have the name.
std::optional<size_t> FindName(std::string_view line, const tagging::Symbol& symbol)
{
    const std::string_view name = ShownName(symbol);
    if (!base::IsIdentifier(name)) {
        const size_t column = NameColumn(line, name) - 1;
        const bool isThere = column > 0 || line.starts_with(name.substr(0, name.find(' ')));
        return isThere && !name.empty() ? std::optional(column) : std::nullopt;
    }
    if (line.find(name) == std::string_view::npos)
        return std::nullopt;
    const size_t sign = line.find_first_not_of(" \t");
    const size_t skipped =
        symbol.kind == Kind::Macro && sign != std::string_view::npos && line[sign] == '#' ? sign + 1 : 0;
    std::optional<size_t> best;
    int fit = -1;
    const std::vector<Token> tokens = TokensOf(line.substr(skipped));
    for (size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].text != name || Fit(tokens, i, symbol) <= fit)
            continue;
        fit = Fit(tokens, i, symbol);
        best = static_cast<size_t>(tokens[i].text.data() - line.data());
    }
    if (best)
        return best;
    const size_t column = NameColumn(line, name) - 1; // in a directive, or behind what looks like a string
    return column > 0 || line.starts_with(name) ? std::optional(column) : std::nullopt;
}

// The line with the name: the symbol's, or the nearest one.
unsigned LineOf(const tagging::Symbol& symbol, const SourceText& text)
{
    for (unsigned far = 0; far <= kFarthest; ++far) {
        if (FindName(text.Line(symbol.line + far), symbol))
            return symbol.line + far;
        if (far > 0 && symbol.line > far && FindName(text.Line(symbol.line - far), symbol))
            return symbol.line - far;
    }
    return symbol.line;
}

std::string_view Trimmed(std::string_view line)
{
    const size_t start = line.find_first_not_of(" \t\f");
    if (start == std::string_view::npos)
        return "";
    return line.substr(start, line.find_last_not_of(" \t\f") + 1 - start);
}

// Whether nothing of a declaration that goes on below can stand in this line.
bool EndsBefore(std::string_view line)
{
    const std::string_view text = Trimmed(line);
    return text.empty() || text.starts_with('#') || text.starts_with("//") || text.ends_with("*/") ||
           text.ends_with(';') || text.ends_with('{') || text.ends_with('}') || text.ends_with('\\') ||
           text == "public:" || text == "private:" || text == "protected:" || text == "signals:" || text == "slots:";
}

// Where the code begins that can belong to the declaration on this line.
size_t HeadBegin(const SourceText& text, unsigned line, Kind kind)
{
    unsigned first = line;
    while (first > 1 && line - first < kLongestHead && !EndsBefore(text.Line(first - 1)) &&
           !(IsInList(kind) && Trimmed(text.Line(first - 1)).ends_with(',')))
        --first;
    return text.LineStart(first);
}

// The first token of the declaration, of those between 'begin' and its name.
size_t StartOf(const SourceText& text, size_t begin, size_t name, Kind kind)
{
    const std::string_view head = text.Content().substr(begin, name - begin);
    size_t start = name;
    bool isNext = true;    // the next token is the first one
    bool isAccess = false; // "public" before it
    int depth = 0;
    for (const Token& token : TokensOf(head)) {
        if (token.kind == Token::kDirective) {
            isNext = true;
            continue;
        }
        const bool isBracket = token.Is('(') || token.Is('[');
        const bool ends = token.Is(';') || token.Is('{') || token.Is('}') ||
                          (IsInList(kind) && (token.Is(',') || isBracket)) || (isAccess && token.Is(':'));
        isAccess = token.Is(std::string_view("public")) || token.Is(std::string_view("private")) ||
                   token.Is(std::string_view("protected"));
        depth += isBracket ? 1 : token.Is(')') || token.Is(']') ? -1 : 0;
        if (ends && (depth <= 0 || IsInList(kind))) {
            isNext = true;
        } else if (isNext) {
            start = begin + static_cast<size_t>(token.text.data() - head.data());
            isNext = false;
        }
    }
    return isNext ? name : start;
}

// The last token, going forward from the name. Nullopt when the text does not tell.
std::optional<size_t> EndFrom(std::string_view content, size_t name, Kind kind)
{
    SourceTokens source(content.substr(name));
    const auto endOf = [&](const Token& token) {
        return static_cast<size_t>(token.text.data() - content.data()) + token.text.size();
    };
    std::optional<size_t> last;
    std::optional<size_t> body; // the end of what may be the function's body
    int depth = 0;
    size_t count = 0;
    for (Token token; source.Next(token) && ++count < kMostTokens;) {
        if (token.kind == Token::kDirective)
            continue;
        if (body && !token.Is('{') && !token.Is(','))
            return body;
        body.reset();
        const bool opens = token.Is('(') || token.Is('[') || token.Is('{');
        const bool closes = token.Is(')') || token.Is(']') || token.Is('}');
        if ((closes && depth == 0) || (depth == 0 && IsInList(kind) && (token.Is(',') || token.Is('>'))))
            return last;
        depth += opens ? 1 : closes ? -1 : 0;
        last = endOf(token);
        if (depth == 0 && token.Is(';'))
            return last;
        if (depth == 0 && token.Is('}') && (IsFunction(kind) || kind == Kind::Namespace))
            body = last;
    }
    return body ? body : count < kMostTokens ? last : std::nullopt;
}

size_t EndOfLastToken(const SourceText& text, unsigned line)
{
    const size_t start = text.LineStart(line);
    const std::vector<Token> tokens = TokensOf(text.Line(line));
    if (tokens.empty())
        return start + text.Line(line).size();
    return static_cast<size_t>(tokens.back().text.data() - text.Content().data()) + tokens.back().text.size();
}

size_t EndOfDirective(const SourceText& text, unsigned line)
{
    while (text.Line(line).ends_with('\\'))
        ++line;
    return EndOfLastToken(text, line);
}

size_t EndOf(const SourceText& text, const tagging::Symbol& symbol, unsigned line, size_t name)
{
    if (symbol.kind == Kind::Macro)
        return EndOfDirective(text, line);
    const std::string_view content = text.Content();
    if (EndsWithAtEnd(symbol.kind)) {
        const size_t end = content.find("@end", name);
        return end == std::string_view::npos ? EndOfLastToken(text, line) : end + 4;
    }
    const unsigned known = symbol.endLine > symbol.line ? symbol.endLine - symbol.line + line : 0;
    if (known != 0 && !IsInList(symbol.kind))
        return EndOfLastToken(text, known);
    return EndFrom(content, name, symbol.kind).value_or(EndOfLastToken(text, line));
}

// "operator" of "operator ==" when the text writes that in another way.
size_t LengthOfName(std::string_view text, const tagging::Symbol& symbol)
{
    const std::string_view shown = ShownName(symbol);
    if (text.starts_with(shown))
        return shown.size();
    return std::min(shown.find_first_of(" =<>+-*/()[]!&|^%,~", 1), shown.size());
}

} // namespace

std::string_view ShownName(const tagging::Symbol& symbol)
{
    return base::IsIdentifier(symbol.name.substr(0, symbol.name.find(':')))
               ? symbol.name.substr(0, symbol.name.find(':'))
               : symbol.name;
}

DeclarationRange RangeOfDeclaration(const tagging::Symbol& symbol, const SourceText& text, std::optional<size_t> known)
{
    const unsigned line = known ? text.LineAt(*known) : LineOf(symbol, text);
    const std::string_view content = text.Line(line);
    const size_t lineStart = text.LineStart(line);
    const std::optional<size_t> name = known ? *known - lineStart : FindName(content, symbol);
    DeclarationRange range;
    range.nameStart = lineStart + name.value_or(std::min(content.find_first_not_of(" \t"), content.size()));
    range.nameEnd = range.nameStart;
    if (name)
        range.nameEnd += std::min(LengthOfName(content.substr(*name), symbol), content.size() - *name);
    const size_t head = HeadBegin(text, line, symbol.kind);
    range.start = symbol.kind == Kind::Macro ? lineStart + std::min(content.find('#'), content.size())
                                             : StartOf(text, head, range.nameStart, symbol.kind);
    range.start = std::min(range.start, range.nameStart);
    range.end = std::max(EndOf(text, symbol, line, range.nameStart), range.nameEnd);
    return range;
}

} // namespace wren
