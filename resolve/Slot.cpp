#include "resolve/Slot.h"

#include "resolve/Blocks.h"

namespace resolve {

namespace {

bool BeginsTag(std::string_view word)
{
    return word == "struct" || word == "union" || word == "enum";
}

bool TakesTypes(std::string_view word)
{
    return word == "sizeof" || word == "typeof" || word == "__typeof__" || word == "for" || word == "va_arg" ||
           word == "offsetof" || word == "encode" || word == "_Alignof" || word == "catch";
}

// "f(x" and "f(a, x"; "(x" without a word before the bracket may be a cast, also behind "return".
Slot InParentheses(const Tokens& tokens, size_t open)
{
    const Token& name = tokens[open - 1];
    if (!name.IsWord() || TakesTypes(name.text))
        return Slot::Any;
    if (!IsInFunction(tokens, open))
        return Slot::Type;
    return name.text == "return" ? Slot::Any : Slot::Value;
}

bool BeginsStatement(const Tokens& tokens, size_t before)
{
    const Token& token = tokens[before];
    if (token.Is('{'))
        return KindOfBlock(tokens, before) != BlockKind::Value && KindOfBlock(tokens, before) != BlockKind::Scope;
    return (token.Is(';') || token.Is('}')) && IsInFunction(tokens, before) &&
           (token.parent == kNone || tokens[token.parent].Is('{'));
}

bool IsValueSign(const Token& token)
{
    static constexpr std::string_view kSigns = "=?+-|!%/^";
    return token.kind == Token::kMark && token.text.size() == 1 && kSigns.find(token.text[0]) != std::string_view::npos;
}

bool IsTypeName(SymbolKind kind)
{
    return kind == SymbolKind::Typedef || kind == SymbolKind::Struct || kind == SymbolKind::Union ||
           kind == SymbolKind::Enum || kind == SymbolKind::Class || kind == SymbolKind::Interface ||
           kind == SymbolKind::Implementation || kind == SymbolKind::Protocol;
}

} // namespace

Slot SlotBehind(const Tokens& tokens, size_t before, bool isCplusplus)
{
    const Token& token = tokens[before];
    if (before == kNone)
        return Slot::Any;
    if (token.text == "case")
        return Slot::Constant;
    if (isCplusplus)
        return Slot::Any;
    if (token.IsWord() && BeginsTag(token.text))
        return Slot::Tag;
    if (token.text == "return" || IsValueSign(token))
        return IsInFunction(tokens, before) ? Slot::Value : Slot::Any;
    if (token.IsWord() && IsSpecifier(token.text))
        return Slot::Type;
    if (token.Is('('))
        return InParentheses(tokens, before);
    if (token.Is(',') && token.parent != kNone && tokens[token.parent].Is('('))
        return InParentheses(tokens, token.parent);
    return BeginsStatement(tokens, before) ? Slot::Statement : Slot::Any;
}

bool Fits(SymbolKind kind, bool hasParameters, Slot slot)
{
    const bool isMacro = kind == SymbolKind::Macro;
    switch (slot) {
    case Slot::Statement:
        return kind != SymbolKind::Enumerator;
    case Slot::Value:
        return !IsTypeName(kind);
    case Slot::Constant:
        return kind == SymbolKind::Enumerator || kind == SymbolKind::Class || kind == SymbolKind::Namespace ||
               kind == SymbolKind::Variable || kind == SymbolKind::Enum || (isMacro && !hasParameters);
    case Slot::Type:
        return IsTypeName(kind) || isMacro;
    case Slot::Tag:
        return kind == SymbolKind::Struct || kind == SymbolKind::Union || kind == SymbolKind::Enum;
    case Slot::Any:
        break;
    }
    return true;
}

} // namespace resolve
