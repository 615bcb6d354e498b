#include "tagging/objectivec/OpenDeclaration.h"

namespace tagging {

namespace {

// Bounds the work for damaged files.
constexpr size_t kLongestDeclaration = 4096;

bool IsSign(const Token& token)
{
    return token.Is('-') || token.Is('+');
}

// Unnamed enumerations count too: their enumerators have names.
bool IsNamedAggregate(TokenSpan tokens, size_t keyword)
{
    return tokens[keyword].text == "enum" || (keyword + 1 < tokens.size() && tokens.back().kind == Token::kWord);
}

} // namespace

void OpenDeclaration::Begin(Subject newSubject, const Token& newIntroducer)
{
    subject = newSubject;
    introducer = newIntroducer;
    tokens.clear();
    parentheses = 0;
    angles = introducer.Is('<') ? 1 : 0;
    braces = 0;
    isInTypeOfC = false;
    typeBegin = 0;
    typeEnd = 0;
}

bool OpenDeclaration::IsEndedBy(const Token& token) const
{
    const bool isMethod = IsSign(token) && parentheses == 0;
    switch (subject) {
    case Subject::Header:
    case Subject::HeaderRest:
        return HeaderIsEndedBy(token);
    case Subject::Method:
    case Subject::Property:
        return token.Is('}') || isMethod;
    case Subject::Variable:
        return token.Is('}');
    case Subject::Names:
        return token.Is('{') || token.Is('}') || isMethod || NamesAreEndedBy(token);
    case Subject::None:
        break;
    }
    return false;
}

// A header has no end mark: it extends as far as possible.
bool OpenDeclaration::HeaderIsEndedBy(const Token& token) const
{
    if (token.Is(';'))
        return subject == Subject::HeaderRest;
    if (token.Is('{') || token.Is('}') || IsSign(token))
        return true;
    if (parentheses > 0 || angles > 0)
        return false;
    if (token.kind == Token::kWord)
        return HeaderHasNoMoreWords(token);
    return !token.Is('(') && !token.Is('<') && !token.Is(':') && !token.Is(',');
}

// A header has one word, and one after each ':' and ','; two at the beginning if the first may be a macro.
bool OpenDeclaration::HeaderHasNoMoreWords(const Token& word) const
{
    if (tokens.empty())
        return subject == Subject::HeaderRest && !introducer.Is(':');
    const Token& before = tokens.back();
    const bool mayFollowMacro = tokens.size() == 1 && before.kind == Token::kWord && before.line == word.line;
    return !before.Is(':') && !before.Is(',') && !mayFollowMacro;
}

// "@class A" without its semicolon, with a declaration on the next line.
bool OpenDeclaration::NamesAreEndedBy(const Token& token) const
{
    if (token.kind != Token::kWord || tokens.empty())
        return false;
    const Token& before = tokens.back();
    return before.kind == Token::kWord && before.line != token.line;
}

bool OpenDeclaration::BraceIsPart() const
{
    return subject != Subject::Method || (parentheses > 0 && OpenAggregate(tokens));
}

bool OpenDeclaration::Add(const Token& token)
{
    CountNesting(token);
    if (tokens.size() >= kLongestDeclaration)
        return false;
    tokens.push_back(token);
    return true;
}

void OpenDeclaration::CountNesting(const Token& token)
{
    if (token.Is('(') || token.Is('['))
        ++parentheses;
    else if ((token.Is(')') || token.Is(']')) && parentheses > 0)
        --parentheses;
    else if (token.Is('<'))
        ++angles;
    else if (token.Is('>') && angles > 0)
        --angles;
}

bool OpenDeclaration::BeginBraces(const Token& brace)
{
    braces = 1;
    const std::optional<size_t> aggregate = OpenAggregate(tokens);
    isInTypeOfC = subject == Subject::Variable && !HasTypeOfC() && aggregate && IsNamedAggregate(tokens, *aggregate);
    if (isInTypeOfC)
        typeBegin = *aggregate;
    return Add(brace);
}

void OpenDeclaration::AddInBraces(const Token& token)
{
    if (token.Is('{'))
        ++braces;
    if (!token.Is('}') || --braces > 0)
        return;
    Add(token);
    if (isInTypeOfC)
        typeEnd = tokens.size();
    isInTypeOfC = false;
}

} // namespace tagging
