// Parsed sources written by hand.
#pragma once

#include "base/CancelToken.h"
#include "tagging/ParsedSource.h"
#include "tagging/SourceParser.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

inline const base::CancelToken kNeverCancelled;

inline tagging::Symbol SymbolNamed(std::string_view name, unsigned line,
                                   tagging::SymbolKind kind = tagging::SymbolKind::Function)
{
    tagging::Symbol symbol;
    symbol.name = name;
    symbol.line = line;
    symbol.kind = kind;
    symbol.isDefinition = true;
    return symbol;
}

// Texts must outlive it. It mentions the names of its symbols.
inline tagging::ParsedSource SourceOf(std::vector<tagging::Symbol> symbols, std::vector<tagging::Include> includes = {},
                                      std::vector<std::string_view> mentions = {})
{
    tagging::ParsedSource source;
    for (const tagging::Symbol& symbol : symbols)
        mentions.push_back(symbol.name);
    source.symbols = std::move(symbols);
    source.includes = std::move(includes);
    source.names = std::move(mentions);
    return source;
}
