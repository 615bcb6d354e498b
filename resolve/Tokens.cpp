#include "resolve/Tokens.h"

#include <algorithm>
#include <set>

namespace resolve {

namespace {

// Beyond that, a template's arguments are not worth finding their end.
constexpr size_t kLongestArguments = 400;
// Hostile nesting: deeper brackets are not matched.
constexpr size_t kDeepest = 500;

using Words = std::set<std::string_view>;

} // namespace

// Finds the other end of each bracket.
class Tokens::Brackets {
public:
    explicit Brackets(std::vector<Token>& all) : all(all) {}

    void Read(size_t index)
    {
        Token& token = all[index];
        const char mark = token.kind == Token::kMark && token.text.size() == 1 ? token.text[0] : ' ';
        if (mark == ')' || mark == ']' || mark == '}')
            Close(index, mark);
        token.parent = open.empty() ? kNone : open.back();
        if ((mark == '(' || mark == '[' || mark == '{') && open.size() < kDeepest)
            open.push_back(index);
    }

    void Read(const tagging::Directive& directive)
    {
        if (directive.BeginsBranches()) {
            branches.push_back({open, {}, false});
        } else if (!branches.empty() && directive.ContinuesBranches()) {
            KeepFirst();
            open = branches.back().before;
        } else if (!branches.empty() && directive.EndsBranches()) {
            KeepFirst();
            open = std::move(branches.back().afterFirst);
            branches.pop_back();
        }
    }

private:
    struct Branches {
        std::vector<size_t> before;
        std::vector<size_t> afterFirst;
        bool hasFirst;
    };

    void KeepFirst()
    {
        if (branches.back().hasFirst)
            return;
        branches.back().afterFirst = open;
        branches.back().hasFirst = true;
    }

    static char OpenOf(char close) { return close == ')' ? '(' : close == ']' ? '[' : '{'; }

    // A closing brace also closes what was left open inside; another bracket without its counterpart is ignored.
    void Close(size_t index, char mark)
    {
        const char wanted = OpenOf(mark);
        for (size_t i = open.size(); i-- > 0;) {
            const char found = all[open[i]].text[0];
            if (found == wanted) {
                all[open[i]].match = index;
                all[index].match = open[i];
                open.resize(i);
                return;
            }
            if (found == '{')
                return;
        }
    }

    std::vector<Token>& all;
    std::vector<size_t> open;
    std::vector<Branches> branches;
};

Tokens::Tokens(std::string_view text, size_t offset, unsigned line) : text(text), start(offset)
{
    tagging::SourceTokens source(text);
    Brackets brackets(all);
    for (tagging::Token token; source.Next(token);) {
        token.line += line - 1;
        const size_t place = start + static_cast<size_t>(token.text.data() - text.data());
        if (token.kind == Token::kDirective) {
            directives.push_back({token.text, place, token.line, all.size()});
            brackets.Read(tagging::Directive(token.text));
        } else {
            Add(token, place, brackets);
        }
    }
}

void Tokens::Add(const tagging::Token& token, size_t offset, Brackets& brackets)
{
    if (token.Is(':') && !all.empty() && all.back().Is(':') && all.back().End() == offset) {
        all.back().text = text.substr(all.back().offset - start, 2);
        return;
    }
    Token added;
    static_cast<tagging::Token&>(added) = token;
    added.offset = offset;
    all.push_back(added);
    brackets.Read(all.size() - 1);
}

size_t Tokens::FirstFrom(size_t offset) const
{
    const auto found =
        std::lower_bound(all.begin(), all.end(), offset, [](const Token& t, size_t o) { return t.offset < o; });
    return static_cast<size_t>(found - all.begin());
}

size_t Tokens::WordAt(size_t offset) const
{
    const size_t next = FirstFrom(offset);
    if (next < all.size() && all[next].offset == offset && all[next].IsWord())
        return next;
    if (next > 0 && all[next - 1].IsWord() && offset <= all[next - 1].End())
        return next - 1;
    return kNone;
}

const PlacedDirective* Tokens::DirectiveAt(size_t offset) const
{
    const auto after = std::upper_bound(directives.begin(), directives.end(), offset,
                                        [](size_t o, const PlacedDirective& d) { return o < d.offset; });
    if (after == directives.begin())
        return nullptr;
    const PlacedDirective& found = *(after - 1);
    return offset <= found.offset + found.text.size() ? &found : nullptr;
}

bool Tokens::IsAssignment(size_t index) const
{
    const Token& token = (*this)[index];
    if (!token.Is('='))
        return false;
    if ((*this)[index + 1].Is('=') && Touch(index, index + 1))
        return false;
    const Token& before = (*this)[index - 1];
    const bool isPart = index > 0 && before.kind == Token::kMark && before.text.size() == 1 &&
                        std::string_view("=!<>+-*/%&|^").find(before.text[0]) != std::string_view::npos &&
                        Touch(index - 1, index);
    return !isPart;
}

size_t Tokens::AngleEnd(size_t open) const
{
    int depth = 0;
    for (size_t i = open; i < all.size() && i < open + kLongestArguments; ++i) {
        const Token& token = all[i];
        if (token.Is('<'))
            ++depth;
        else if (token.Is('>') && --depth == 0)
            return i;
        else if (token.Is(';') || token.Is('{') || token.Is('}') || token.Is(')') || token.Is(']'))
            return kNone;
        else if (token.match != kNone && token.match > i)
            i = token.match;
        else if ((token.Is('&') || token.Is('|')) && (*this)[i + 1].text == token.text && Touch(i, i + 1) &&
                 !(*this)[i + 2].Is('>') && !(*this)[i + 2].Is(','))
            return kNone;
    }
    return kNone;
}

size_t Tokens::AngleBegin(size_t close) const
{
    int depth = 0;
    for (size_t i = close; i < all.size() && i + kLongestArguments > close; --i) {
        const Token& token = all[i];
        if (token.Is('>'))
            ++depth;
        else if (token.Is('<') && --depth == 0)
            return (*this)[i - 1].IsWord() && !IsStatementWord((*this)[i - 1].text) ? i : kNone;
        else if (token.Is(';') || token.Is('{') || token.Is('}') || token.Is('(') || token.Is('['))
            return kNone;
        else if (token.match != kNone && token.match < i)
            i = token.match;
    }
    return kNone;
}

std::string_view Tokens::Text(size_t first, size_t last) const
{
    if (first > last || last >= all.size())
        return {};
    return text.substr(all[first].offset - start, all[last].End() - all[first].offset);
}

std::vector<Tokens::Range> Tokens::Parts(size_t begin, size_t end) const
{
    std::vector<Range> parts;
    size_t from = begin;
    for (size_t i = begin; i < end && i < all.size(); ++i) {
        if (all[i].Is('<')) {
            const size_t close = AngleEnd(i);
            if (close != kNone && close < end && (*this)[i - 1].IsWord())
                i = close;
        } else if (all[i].match != kNone && all[i].match > i) {
            i = all[i].match;
        } else if (all[i].Is(',')) {
            parts.push_back({from, i});
            from = i + 1;
        }
    }
    if (from < end || !parts.empty())
        parts.push_back({from, end});
    return parts;
}

bool IsStatementWord(std::string_view word)
{
    static const Words kWords = {"if",        "else",    "for",      "while",     "do",       "switch",   "case",
                                 "default",   "return",  "goto",     "break",     "continue", "throw",    "new",
                                 "delete",    "sizeof",  "try",      "co_return", "using",    "co_await", "co_yield",
                                 "namespace", "typedef", "operator", "public",    "private",  "catch",    "protected"};
    return kWords.contains(word);
}

bool IsBuiltInType(std::string_view word)
{
    static const Words kWords = {"void",   "int",      "char",  "bool",    "float",    "double",   "long",   "short",
                                 "signed", "unsigned", "_Bool", "char8_t", "char16_t", "char32_t", "wchar_t"};
    return kWords.contains(word);
}

bool IsSpecifier(std::string_view word)
{
    static const Words kWords = {"const",         "volatile",
                                 "static",        "extern",
                                 "inline",        "register",
                                 "constexpr",     "thread_local",
                                 "mutable",       "typename",
                                 "struct",        "class",
                                 "union",         "enum",
                                 "virtual",       "explicit",
                                 "friend",        "constinit",
                                 "consteval",     "restrict",
                                 "__restrict",    "__inline",
                                 "__inline__",    "__const",
                                 "__volatile",    "_Noreturn",
                                 "noexcept",      "__thread",
                                 "__restrict__",  "__extension__",
                                 "__block",       "__weak",
                                 "__strong",      "nullable",
                                 "nonnull",       "_Nonnull",
                                 "_Nullable",     "in",
                                 "out",           "inout",
                                 "bycopy",        "byref",
                                 "oneway",        "__typeof",
                                 "_Thread_local", "__unsafe_unretained"};
    return kWords.contains(word);
}

bool IsKeyword(std::string_view word)
{
    static const Words kWords = {
        "auto",          "true",       "false",         "nullptr",      "this",           "decltype",
        "typeof",        "template",   "static_cast",   "dynamic_cast", "const_cast",     "reinterpret_cast",
        "alignof",       "asm",        "static_assert", "typeid",       "requires",       "concept",
        "__attribute__", "__typeof__", "alignas",       "__asm__",      "_Static_assert", "defined"};
    // These are names as well, outside of Objective-C's declarations.
    static const Words kNames = {"in", "out", "inout", "bycopy", "byref", "oneway", "nullable", "nonnull"};
    if (kNames.contains(word))
        return false;
    return kWords.contains(word) || IsStatementWord(word) || IsBuiltInType(word) || IsSpecifier(word);
}

} // namespace resolve
