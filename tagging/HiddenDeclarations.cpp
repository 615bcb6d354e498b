#include "tagging/HiddenDeclarations.h"

#include "tagging/tokens/Keywords.h"

#include <algorithm>

namespace tagging {

namespace {

bool IsUpper(char c)
{
    return c >= 'A' && c <= 'Z';
}

bool IsInName(char c)
{
    return IsUpper(c) || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

// As macros are written: no lower-case letter, and more than a template's parameter.
bool LooksLikeMacro(std::string_view name)
{
    return name.size() > 2 && std::any_of(name.begin(), name.end(), IsUpper) &&
           std::all_of(name.begin(), name.end(),
                       [](char c) { return IsUpper(c) || c == '_' || !IsInName(c) || c <= '9'; });
}

std::string_view WithoutBlanksAtEnd(std::string_view text)
{
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

// "stats_" of "Stats stats_[kLevels]".
std::string_view LastName(std::string_view text)
{
    if (text.ends_with(']'))
        text = text.substr(0, std::min(text.find('['), text.size()));
    size_t begin = text.size();
    while (begin > 0 && IsInName(text[begin - 1]))
        --begin;
    return text.substr(begin);
}

bool IsBuiltInType(std::string_view word)
{
    static constexpr std::string_view kTypes[] = {"bool", "char",     "double",   "float",    "int",     "long",
                                                  "auto", "short",    "signed",   "unsigned", "wchar_t", "char8_t",
                                                  "void", "char16_t", "char32_t", "_Bool"};
    return std::find(std::begin(kTypes), std::end(kTypes), word) != std::end(kTypes);
}

// Whether a name may follow, and not only the rest of a type: "unsigned int", "Foo *", but not "const" or "EXPORT".
bool EndsType(std::string_view text)
{
    if (text.empty())
        return false;
    if (text.back() == '*' || text.back() == '&' || text.back() == '>')
        return true;
    const std::string_view word = LastName(text);
    if (word.empty() || LooksLikeMacro(word))
        return false;
    return IsBuiltInType(word) || word == "const" ? text != "const"
                                                  : KindOfKeyword(word) == Keyword::No && word != "inline";
}

} // namespace

std::optional<Symbol> DeclarationBefore(const Symbol& symbol)
{
    const bool isVariable = symbol.kind == SymbolKind::Member || symbol.kind == SymbolKind::Variable;
    if ((symbol.kind != SymbolKind::Prototype && !isVariable) || !LooksLikeMacro(symbol.name))
        return std::nullopt;
    const std::string_view name = LastName(symbol.type);
    if (name.empty() || name.front() <= '9' || LooksLikeMacro(name) || KindOfKeyword(name) != Keyword::No)
        return std::nullopt;
    const std::string_view type =
        WithoutBlanksAtEnd(symbol.type.substr(0, static_cast<size_t>(name.data() - symbol.type.data())));
    if (!EndsType(type))
        return std::nullopt;
    Symbol hidden = symbol;
    hidden.name = name;
    hidden.type = type;
    hidden.signature = {};
    const bool isInClass = symbol.scopeKind == SymbolKind::Class || symbol.scopeKind == SymbolKind::Struct ||
                           symbol.scopeKind == SymbolKind::Union;
    hidden.kind = isInClass ? SymbolKind::Member : SymbolKind::Variable;
    hidden.isDefinition = !(isInClass && symbol.isStatic);
    hidden.isUnknownToCtags = true;
    return hidden;
}

} // namespace tagging
