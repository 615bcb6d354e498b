#include "resolve/Blocks.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <vector>

namespace resolve {

namespace {

constexpr size_t kLongestHead = 600; // tokens
constexpr int kMostOldStyleDeclarations = 20;

bool IsControl(std::string_view word)
{
    return word == "if" || word == "for" || word == "while" || word == "switch" || word == "catch" || word == "foreach";
}

bool BeginsScope(std::string_view word)
{
    return word == "class" || word == "struct" || word == "union" || word == "enum" || word == "namespace" ||
           word == "extern";
}

bool LooksLikeMacro(std::string_view word)
{
    return std::none_of(word.begin(), word.end(), [](unsigned char c) { return std::islower(c) != 0; });
}

// A name before '(' that is not the function's.
bool TakesArguments(std::string_view word)
{
    static const std::set<std::string_view> kWords = {
        "__attribute__", "alignas",    "decltype", "noexcept", "__declspec", "typeof",     "throw",
        "explicit",      "__typeof__", "requires", "asm",      "__asm__",    "__attribute"};
    return kWords.contains(word);
}

bool IsBehind(const Tokens& tokens, size_t index, size_t open)
{
    return tokens[index].parent == tokens[open].parent;
}

bool EndsInitializer(const Tokens& tokens, size_t close, size_t open)
{
    const bool goesOn = tokens[close + 1].Is(',') || close + 1 == open;
    const size_t brace = tokens[close].match;
    return goesOn && brace != kNone && tokens[brace - 1].IsWord() && !IsStatementWord(tokens[brace - 1].text) &&
           (tokens[brace - 2].Is(',') || tokens[brace - 2].Is(':'));
}

bool HeadHas(const Tokens& tokens, size_t open, auto matches)
{
    for (size_t i = HeadOfBlock(tokens, open); i < open; ++i) {
        if (matches(i))
            return true;
        if (tokens[i].match != kNone && tokens[i].match > i && tokens[i].match < open)
            i = tokens[i].match;
        else if (tokens[i].Is('<') && tokens.AngleEnd(i) < open)
            i = tokens.AngleEnd(i);
    }
    return false;
}

bool HasScopeWord(const Tokens& tokens, size_t open)
{
    return HeadHas(tokens, open, [&](size_t i) { return tokens[i].IsWord() && BeginsScope(tokens[i].text); });
}

bool HasParameters(const Tokens& tokens, size_t open)
{
    return HeadHas(tokens, open, [&](size_t i) { return tokens[i].Is('('); });
}

bool IsLambdaBegin(const Tokens& tokens, size_t bracket)
{
    const Token& before = tokens[bracket - 1];
    if (!tokens[bracket].Is('[') || bracket == 0)
        return false;
    return !(before.IsWord() && !IsStatementWord(before.text)) && !before.Is(')') && !before.Is(']');
}

BlockKind AfterParenthesis(const Tokens& tokens, size_t open, bool inFunction)
{
    const size_t begin = tokens[open - 1].match;
    if (begin == kNone)
        return BlockKind::Statement;
    const Token& before = tokens[begin - 1];
    if (before.Is(']') && IsLambdaBegin(tokens, before.match))
        return BlockKind::Lambda;
    if (before.Is('^') || BeginOfLambda(tokens, open) != kNone)
        return BlockKind::Lambda;
    if (before.IsWord() && IsControl(before.text))
        return BlockKind::Statement;
    if (!inFunction)
        return before.Is('=') ? BlockKind::Value : BlockKind::Function;
    if (before.IsWord() && !IsStatementWord(before.text))
        return tokens[HeadOfBlock(tokens, open)].text == before.text || IsSpecifier(before.text) ? BlockKind::Statement
               : HasScopeWord(tokens, open)                                                      ? BlockKind::Scope
                                                                                                 : BlockKind::Statement;
    return BlockKind::Value; // (struct point){1, 2}
}

BlockKind AfterWord(const Tokens& tokens, size_t open, bool inFunction)
{
    const Token& before = tokens[open - 1];
    if (before.text == "else" || before.text == "do" || before.text == "try" || tokens[open - 2].Is('@'))
        return BlockKind::Statement;
    if (BeginOfLambda(tokens, open) != kNone)
        return BlockKind::Lambda;
    if (HasScopeWord(tokens, open) && !HasParameters(tokens, open))
        return BlockKind::Scope;
    if (before.text == "return")
        return BlockKind::Value;
    const Token& head = tokens[HeadOfBlock(tokens, open)];
    if (!inFunction && (head.Is('-') || head.Is('+') || HasParameters(tokens, open)))
        return BlockKind::Function;
    return HasScopeWord(tokens, open) ? BlockKind::Scope : BlockKind::Value;
}

} // namespace

bool BeginsMethod(const Tokens& tokens, size_t sign)
{
    if (tokens[sign].parent != kNone || !(tokens[sign].Is('-') || tokens[sign].Is('+')))
        return false;
    const Token& before = tokens[sign - 1];
    const Token& after = tokens[sign + 1];
    return before.text != "operator" && !before.Is('=') && !before.Is('-') && !before.Is('+') &&
           (after.Is('(') || after.IsWord());
}

size_t HeadOfBlock(const Tokens& tokens, size_t open)
{
    size_t begin = open;
    for (size_t i = open; i-- > 0 && i + kLongestHead > open;) {
        const Token& token = tokens[i];
        if (token.Is(';') || i == tokens[open].parent)
            break;
        if (token.Is('}') && !EndsInitializer(tokens, i, open))
            break;
        if (token.Is(':') && tokens[i - 1].IsWord() && tokens[i - 1].text.starts_with("p") &&
            IsStatementWord(tokens[i - 1].text))
            break;
        if (BeginsMethod(tokens, i))
            return i;
        if (token.match != kNone && token.match < i)
            i = token.match;
        begin = i;
    }
    return begin;
}

size_t BeginOfLambda(const Tokens& tokens, size_t open)
{
    // From the right: "[x](int y) mutable -> int {", "^(int x) {", "^{".
    for (size_t i = open; i-- > 0 && i + 40 > open && IsBehind(tokens, i, open);) {
        const Token& token = tokens[i];
        if (token.Is('^'))
            return i;
        if (token.Is(']')) {
            if (token.match != kNone && IsLambdaBegin(tokens, token.match))
                return token.match;
            return kNone;
        }
        if (token.Is('}') || token.Is(';') || token.Is('=') || token.Is(','))
            return kNone;
        if (token.match != kNone && token.match < i)
            i = token.match;
    }
    return kNone;
}

namespace {

// What is around a block.
struct Around {
    bool inFunction = false;
    bool inValue = false; // the next brace to the outside begins one
};

BlockKind KindInside(const Around& around, const Tokens& tokens, size_t open);

Around Inside(const Around& around, const Tokens& tokens, size_t open)
{
    const BlockKind kind = KindInside(around, tokens, open);
    if (kind == BlockKind::Value)
        return {around.inFunction, true};
    return {tokens[open].parent == kNone ? kind == BlockKind::Function : kind != BlockKind::Scope, false};
}

// From the outside in, so that the time is in proportion to the depth: sources may be nested to slow us down.
Around AroundOf(const Tokens& tokens, size_t index)
{
    std::vector<size_t> braces;
    for (size_t i = tokens[index].parent; i != kNone; i = tokens[i].parent)
        if (tokens[i].Is('{'))
            braces.push_back(i);
    Around around;
    for (; !braces.empty(); braces.pop_back())
        around = Inside(around, tokens, braces.back());
    return around;
}

BlockKind KindInside(const Around& around, const Tokens& tokens, size_t open)
{
    const Token& before = tokens[open - 1];
    const bool inFunction = around.inFunction;
    if (open == 0)
        return BlockKind::Statement;
    if (before.Is(')'))
        return AfterParenthesis(tokens, open, inFunction);
    if (before.Is('('))
        return inFunction ? BlockKind::Statement : BlockKind::Value; // ({ a statement expression })
    if (before.Is('='))
        return BlockKind::Value;
    if (before.Is(',') || before.Is('@'))
        return BlockKind::Value;
    if (before.Is('{'))
        return around.inValue && tokens[open].parent == open - 1 ? BlockKind::Value : BlockKind::Statement;
    if (before.Is(']') || before.Is('^'))
        return BeginOfLambda(tokens, open) != kNone ? BlockKind::Lambda : BlockKind::Value;
    if (before.kind == Token::kLiteral)
        return BlockKind::Scope;
    if (before.Is(';') || before.Is(':'))
        return inFunction ? BlockKind::Statement : BlockKind::Function;
    if (before.Is('}'))
        return inFunction || !HasParameters(tokens, open) ? BlockKind::Statement : BlockKind::Function;
    if (before.Is('>') || before.Is('*') || before.Is('&') || before.IsWord())
        return AfterWord(tokens, open, inFunction);
    return BlockKind::Value;
}

} // namespace

bool IsInFunction(const Tokens& tokens, size_t index)
{
    return AroundOf(tokens, index).inFunction;
}

BlockKind KindOfBlock(const Tokens& tokens, size_t open)
{
    return KindInside(AroundOf(tokens, open), tokens, open);
}

size_t ParametersOfBlock(const Tokens& tokens, size_t open)
{
    size_t begin = BeginOfLambda(tokens, open);
    if (begin != kNone)
        begin = tokens[begin].Is('[') ? tokens[begin].match + 1 : begin + 1;
    else
        begin = HeadOfBlock(tokens, open);
    int old = 0;
    const bool isOldStyle = tokens[open - 1].Is(';');
    while (isOldStyle && begin > 0 && tokens[begin - 1].Is(';') && old++ < kMostOldStyleDeclarations) {
        // "int f(a) char *a; {": back over the declarations.
        size_t before = begin - 1;
        while (before > 0 && !tokens[before - 1].Is(';') && !tokens[before - 1].Is('}') && !tokens[before - 1].Is(')'))
            --before;
        if (before == 0 || tokens[before - 1].Is('}'))
            break;
        begin = tokens[before - 1].Is(')') ? HeadOfBlock(tokens, tokens[before - 1].match) : before;
        if (tokens[before - 1].Is(')'))
            break;
    }
    size_t found = kNone;
    for (size_t i = begin; i < open; ++i) {
        const Token& token = tokens[i];
        if (token.Is('<') && tokens.AngleEnd(i) != kNone) {
            i = tokens.AngleEnd(i);
            continue;
        }
        if (token.Is(':') && found != kNone)
            break;
        if (!token.Is('(') || token.match == kNone)
            continue;
        const Token& before = tokens[i - 1];
        const bool isOther = before.IsWord() && (TakesArguments(before.text) || before.text == "operator");
        if (!isOther && (found == kNone || !LooksLikeMacro(before.text)))
            found = i;
        i = token.match;
        if (tokens[i + 1].Is('-') || tokens[i + 1].text == "->" || tokens[i + 1].text == "const")
            break;
    }
    return found;
}

} // namespace resolve
