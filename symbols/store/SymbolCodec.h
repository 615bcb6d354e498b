// How a segment stores one symbol: most symbols have a name and a line only, and take about ten bytes.
#pragma once

#include "symbols/store/Format.h"
#include "symbols/store/Varint.h"
#include "tagging/ParsedSource.h"

#include <string>

namespace symbols {

// The longest possible one, in bytes.
constexpr size_t kLongestSymbol = 64;

struct SymbolRecord {
    enum Text { Name, Scope, Type, Signature, Bases, TemplateParameters, Target, kTexts };
    TextNumber texts[kTexts];
    tagging::Symbol rest; // with empty texts
};

void PutSymbol(std::string& out, const SymbolRecord& symbol);
// False for what no PutSymbol() wrote.
bool ReadSymbol(VarintReader& reader, SymbolRecord* symbol);

} // namespace symbols
