#include "tagging/ChangedFunction.h"

#include "tagging/SymbolOutput.h"
#include "tagging/tokens/SourceTokens.h"

#include <algorithm>
#include <charconv>

namespace tagging {

namespace {

// Enumerators of unnamed enumerations before and behind each version of the function. That ctags finds the last one
// shows that it reads on as behind the earlier version. Their scopes show how many numbers of unnamed declarations each
// version took: a change of that changes names in all of the text.
constexpr std::string_view kFirst = "before_the_earlier_function";
constexpr std::string_view kMiddle = "before_the_changed_function";
constexpr std::string_view kLast = "behind_the_changed_function";

struct Difference {
    size_t begin = 0; // bytes: the same before
    size_t endBefore = 0;
    size_t endNow = 0; // the same from there on
};

Difference Compare(std::string_view before, std::string_view now)
{
    const size_t most = std::min(before.size(), now.size());
    Difference found;
    found.begin = static_cast<size_t>(
        std::mismatch(before.begin(), before.begin() + static_cast<std::ptrdiff_t>(most), now.begin()).first -
        before.begin());
    size_t tail = 0;
    while (tail < most - found.begin && before[before.size() - 1 - tail] == now[now.size() - 1 - tail])
        ++tail;
    found.endBefore = before.size() - tail;
    found.endNow = now.size() - tail;
    return found;
}

unsigned CountLines(std::string_view text)
{
    return static_cast<unsigned>(std::count(text.begin(), text.end(), '\n'));
}

// From the start of the line 'begin' is in to the end of that of 'end'.
std::string_view WholeLines(std::string_view text, size_t begin, size_t end)
{
    const size_t start = begin == 0 ? 0 : text.rfind('\n', begin - 1) + 1; // npos + 1 is 0
    const size_t stop = std::min(text.find('\n', end), text.size());
    return text.substr(start, stop - start);
}

bool IsLineStart(std::string_view text, size_t offset)
{
    return offset == 0 || text[offset - 1] == '\n';
}

// Lines from 1, both included.
std::string_view Lines(std::string_view text, unsigned firstLine, unsigned lastLine)
{
    size_t begin = 0;
    for (unsigned line = 1; line < firstLine && begin != std::string_view::npos; ++line)
        begin = text.find('\n', begin) == std::string_view::npos ? text.size() : text.find('\n', begin) + 1;
    size_t end = begin;
    for (unsigned line = firstLine; line <= lastLine && end < text.size(); ++line)
        end = std::min(text.find('\n', end), text.size() - 1) + 1;
    return text.substr(begin, end - begin);
}

// A part of a directive, or next to one.
bool MayBeDirective(std::string_view lines, std::string_view text)
{
    const size_t start = static_cast<size_t>(lines.data() - text.data());
    const std::string_view earlier = text.substr(0, start == 0 ? 0 : start - 1);
    return lines.find('#') != std::string_view::npos ||
           lines.find('\\' + std::string("\n")) != std::string_view::npos || lines.ends_with('\\') ||
           lines.find('\r') != std::string_view::npos || earlier.ends_with('\\') || earlier.ends_with("\\\r");
}

bool HasOddLineBreaks(std::string_view text)
{
    for (size_t at = text.find('\r'); at != std::string_view::npos; at = text.find('\r', at + 1))
        if (at + 1 == text.size() || text[at + 1] != '\n')
            return true;
    return text.find('\0') != std::string_view::npos;
}

// Whether the text is in the body of the function that begins with it, from the offset on.
bool IsBody(std::string_view function, size_t offset)
{
    SourceTokens tokens(function.substr(0, offset));
    Token token;
    int depth = 0;
    while (tokens.Next(token)) {
        if (token.kind == Token::kDirective)
            return false;
        if (token.Is('('))
            ++depth;
        else if (token.Is(')'))
            --depth;
        else if (token.Is('{') && depth == 0)
            return true;
    }
    return false;
}

std::vector<std::string_view> DirectivesIn(std::string_view text)
{
    std::vector<std::string_view> all;
    SourceTokens tokens(text);
    Token token;
    while (tokens.Next(token))
        if (token.kind == Token::kDirective)
            all.push_back(token.text);
    return all;
}

bool HasBalancedBrackets(std::string_view text)
{
    std::string open;
    SourceTokens tokens(text);
    Token token;
    while (tokens.Next(token)) {
        if (token.Is('(') || token.Is('['))
            open += token.text[0] == '(' ? ')' : ']';
        else if (token.Is('{'))
            open += '}';
        else if (token.Is(')') || token.Is(']') || token.Is('}')) {
            if (open.empty() || open.back() != token.text[0])
                return false;
            open.pop_back();
        }
    }
    return open.empty();
}

// Unnamed declarations are numbered from the text's beginning.
bool IsSameName(std::string_view a, std::string_view b)
{
    constexpr std::string_view kUnnamed = "__anon";
    return a == b || (a.find(kUnnamed) != std::string_view::npos && b.find(kUnnamed) != std::string_view::npos);
}

// The scope of what ctags found in the excerpt lacks what is around the function.
bool IsSameScope(std::string_view whole, std::string_view inExcerpt)
{
    return whole.ends_with(inExcerpt) || IsSameName(whole, inExcerpt);
}

// The innermost one that has a name and begins before the lines and ends behind them.
const Symbol* FunctionAround(const std::vector<Symbol>& symbols, unsigned first, unsigned last)
{
    const Symbol* found = nullptr;
    for (const Symbol& symbol : symbols) {
        if (symbol.line >= first)
            break;
        if (symbol.kind == SymbolKind::Function && symbol.endLine > last && !symbol.isUnknownToCtags &&
            symbol.name.find("__anon") == std::string_view::npos)
            found = &symbol;
    }
    return found;
}

std::string Mark(std::string_view name)
{
    return "enum { " + std::string(name) + " };\n";
}

std::string Ended(std::string_view lines)
{
    return std::string(lines) + (lines.ends_with('\n') ? "" : "\n");
}

struct Marks { // in ctags' output
    const Symbol* middle = nullptr;
    const Symbol* last = nullptr;
    bool areEven = false; // both versions have as many unnamed declarations
};

// The number in "__anon", eight digits, the number, two digits.
std::optional<long> NumberOfUnnamed(std::string_view name)
{
    constexpr size_t kBefore = 14;
    constexpr size_t kBehind = 2;
    if (!name.starts_with("__anon") || name.size() <= kBefore + kBehind)
        return std::nullopt;
    const std::string_view digits = name.substr(kBefore, name.size() - kBefore - kBehind);
    long number = 0;
    const auto [end, problem] = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    return problem == std::errc() && end == digits.data() + digits.size() ? std::optional(number) : std::nullopt;
}

Marks FindMarks(const std::vector<Symbol>& symbols)
{
    Marks marks;
    const Symbol* first = nullptr;
    for (const Symbol& symbol : symbols)
        if (symbol.kind == SymbolKind::Enumerator && symbol.name == kFirst)
            first = &symbol;
        else if (symbol.kind == SymbolKind::Enumerator && symbol.name == kMiddle)
            marks.middle = &symbol;
        else if (symbol.kind == SymbolKind::Enumerator && symbol.name == kLast)
            marks.last = &symbol;
    if (first == nullptr || marks.middle == nullptr || marks.last == nullptr)
        return {};
    const std::optional<long> begin = NumberOfUnnamed(first->scope);
    const std::optional<long> middle = NumberOfUnnamed(marks.middle->scope);
    const std::optional<long> end = NumberOfUnnamed(marks.last->scope);
    marks.areEven = begin && middle && end && *middle - *begin == *end - *middle;
    return marks;
}

// The symbols between the marks, with lines counted from the first one's next line.
std::vector<Symbol> Between(const std::vector<Symbol>& symbols, unsigned first, unsigned last)
{
    std::vector<Symbol> found;
    for (Symbol symbol : symbols) {
        if (symbol.line <= first || symbol.line >= last || symbol.kind == SymbolKind::Macro)
            continue;
        symbol.line -= first;
        symbol.endLine -= std::min(first, symbol.endLine);
        found.push_back(symbol);
    }
    std::ranges::stable_sort(found, {}, &Symbol::line);
    return found;
}

Symbol Copied(Symbol symbol, base::TextPool& texts)
{
    for (std::string_view Symbol::*const text : {&Symbol::name, &Symbol::scope, &Symbol::type, &Symbol::signature,
                                                 &Symbol::bases, &Symbol::templateParameters, &Symbol::target})
        if (!(symbol.*text).empty())
            symbol.*text = texts.Put(symbol.*text);
    return symbol;
}

} // namespace

std::optional<ChangedFunction> ChangedFunction::Find(const EarlierText& before, std::string_view text)
{
    const ParsedSource& source = before.source;
    if (source.isIncomplete || (source.language != Language::C && source.language != Language::Cplusplus))
        return std::nullopt;
    const Difference changed = Compare(before.text, text);
    // When lines were put in or taken out, those around them have not changed.
    const bool areLines = IsLineStart(text, changed.begin) && IsLineStart(before.text, changed.endBefore) &&
                          IsLineStart(text, changed.endNow);
    const std::string_view linesBefore = areLines ? before.text.substr(changed.begin, changed.endBefore - changed.begin)
                                                  : WholeLines(before.text, changed.begin, changed.endBefore);
    const std::string_view linesNow = areLines ? text.substr(changed.begin, changed.endNow - changed.begin)
                                               : WholeLines(text, changed.begin, changed.endNow);
    if (MayBeDirective(linesBefore, before.text) || MayBeDirective(linesNow, text))
        return std::nullopt;
    const unsigned first = CountLines(text.substr(0, changed.begin)) + 1;
    const unsigned lastBefore = first + CountLines(linesBefore) - (areLines ? 1 : 0);
    const Symbol* const function = FunctionAround(source.symbols, first, lastBefore);
    if (function == nullptr)
        return std::nullopt;
    ChangedFunction found(source, *function);
    found.first = first;
    found.lastBefore = lastBefore;
    found.lastNow = first + CountLines(linesNow) - (areLines ? 1 : 0);
    const std::string_view earlier = Lines(before.text, function->line, function->endLine);
    const std::string_view now = Lines(text, function->line, found.Moved(function->endLine));
    if (HasOddLineBreaks(now) || !IsBody(now, static_cast<size_t>(linesNow.data() - now.data())))
        return std::nullopt;
    const std::vector<std::string_view> directives = DirectivesIn(now);
    if (directives != DirectivesIn(earlier))
        return std::nullopt;
    // With branches of an #if, ctags may try another way to read the whole text when the brackets do not match.
    if (!directives.empty() && !(HasBalancedBrackets(linesBefore) && HasBalancedBrackets(linesNow)))
        return std::nullopt;
    found.excerpt = Mark(kFirst) + Ended(earlier) + Mark(kMiddle) + Ended(now) + Mark(kLast);
    return found;
}

bool ChangedFunction::IsInner(const Symbol& symbol) const
{
    return &symbol != &function && symbol.line >= function.line && symbol.line <= function.endLine &&
           symbol.kind != SymbolKind::Macro && !symbol.isUnknownToCtags;
}

bool ChangedFunction::IsSame(const Symbol& earlier, const Symbol& now) const
{
    const unsigned line = now.line + function.line - 1;
    const unsigned endLine = now.endLine == 0 ? 0 : now.endLine + function.line - 1;
    return Moved(earlier.line) == line && Moved(earlier.endLine) == endLine && earlier.kind == now.kind &&
           earlier.scopeKind == now.scopeKind && earlier.access == now.access &&
           earlier.isDefinition == now.isDefinition && earlier.isStatic == now.isStatic &&
           earlier.isScopedEnum == now.isScopedEnum && earlier.isInline == now.isInline &&
           earlier.isVirtual == now.isVirtual && earlier.isSpecialization == now.isSpecialization &&
           earlier.kind != SymbolKind::UsingName && IsSameName(earlier.name, now.name) &&
           IsSameScope(earlier.scope, now.scope) && IsSameName(earlier.type, now.type) &&
           IsSameName(earlier.signature, now.signature) && IsSameName(earlier.bases, now.bases) &&
           earlier.templateParameters == now.templateParameters && earlier.target == now.target;
}

bool ChangedFunction::HasSameInside(const std::vector<Symbol>& inside) const
{
    const auto hasChanged = [this](unsigned line) { return line >= first && line <= lastBefore; };
    size_t next = 0;
    for (const Symbol& symbol : before.symbols) {
        if (!IsInner(symbol))
            continue;
        if (hasChanged(symbol.line) || hasChanged(symbol.endLine))
            return false;
        if (next == inside.size() || !IsSame(symbol, inside[next++]))
            return false;
    }
    return next == inside.size();
}

std::optional<std::vector<Symbol>> ChangedFunction::Symbols(std::string_view ofCtags, base::TextPool& texts) const
{
    base::TextPool forThis;
    const std::vector<Symbol> output = ReadSymbols(ofCtags, forThis);
    const Marks marks = FindMarks(output);
    const unsigned last = Moved(function.endLine) - function.line + 1;
    const unsigned earlierLines = function.endLine - function.line + 1;
    if (!marks.areEven || marks.middle->line != earlierLines + 2 || marks.last->line != marks.middle->line + last + 1)
        return std::nullopt;
    std::vector<Symbol> inside = Between(output, marks.middle->line, marks.last->line);
    const auto own = std::ranges::find_if(inside, [&](const Symbol& symbol) {
        return symbol.kind == SymbolKind::Function && symbol.line == 1 && symbol.name == function.name;
    });
    if (own == inside.end() || own->endLine != last || !IsSameScope(function.scope, own->scope))
        return std::nullopt;
    inside.erase(own);
    if (!HasSameInside(inside))
        return std::nullopt;
    std::vector<Symbol> all;
    all.reserve(before.symbols.size());
    for (const Symbol& symbol : before.symbols) {
        all.push_back(Copied(symbol, texts));
        all.back().line = Moved(symbol.line);
        all.back().endLine = Moved(symbol.endLine);
    }
    return all;
}

} // namespace tagging
