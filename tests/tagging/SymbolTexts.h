// Symbols as lines of text, for tests.
#pragma once

#include "tagging/ParsedSource.h"

#include <algorithm>
#include <string>
#include <vector>

namespace tagging {

// "7-9 method Outer::name (int a) -> int <T> : Base [definition static]": parts that are empty are left out.
inline std::string TextOf(const Symbol& symbol)
{
    std::string text = std::to_string(symbol.line);
    if (symbol.endLine != 0 && symbol.endLine != symbol.line)
        text += "-" + std::to_string(symbol.endLine);
    text += " " + std::string(LongName(symbol.kind)) + " ";
    if (!symbol.scope.empty())
        text += std::string(LongName(symbol.scopeKind)) + ":" + std::string(symbol.scope) + "::";
    text += symbol.name;
    const auto add = [&](std::string_view before, std::string_view part) {
        if (!part.empty())
            text += std::string(before) + std::string(part);
    };
    add(" ", symbol.signature);
    add(" -> ", symbol.type);
    add(" ", symbol.templateParameters);
    add(" : ", symbol.bases);
    add(" = ", symbol.target);
    std::string words;
    const auto mark = [&](bool is, std::string_view word) {
        if (is)
            words += (words.empty() ? "" : " ") + std::string(word);
    };
    mark(symbol.access == Symbol::Access::Public, "public");
    mark(symbol.access == Symbol::Access::Protected, "protected");
    mark(symbol.access == Symbol::Access::Private, "private");
    mark(!symbol.isDefinition, "declaration");
    mark(symbol.isFileLocal, "local");
    mark(symbol.isStatic, "static");
    mark(symbol.isScopedEnum, "scoped");
    mark(symbol.isInline, "inline");
    mark(symbol.isVirtual, "virtual");
    mark(symbol.isSpecialization, "specialization");
    mark(symbol.isUnknownToCtags, "extra");
    return words.empty() ? text : text + " [" + words + "]";
}

inline std::vector<std::string> TextsOf(const std::vector<Symbol>& symbols)
{
    std::vector<std::string> texts;
    for (const Symbol& symbol : symbols)
        texts.push_back(TextOf(symbol));
    return texts;
}

inline std::vector<std::string> SortedNames(const ParsedSource& source)
{
    std::vector<std::string> names(source.names.begin(), source.names.end());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace tagging
