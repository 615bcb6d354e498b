#include "symbols/store/SymbolCodec.h"

namespace symbols {

namespace {

// One byte with the kind and kEndLine; two bytes of bits; the name and the line; then what the bits say is there.
constexpr unsigned kEndLine = 0x80; // there is one
constexpr unsigned kFirstFlag = 2;
constexpr unsigned kAllFlags = 0xff;
constexpr unsigned kFirstText = 10; // its bit says that there is a scope; the bits of the other texts follow

constexpr bool tagging::Symbol::*kFlags[] = {
    &tagging::Symbol::isDefinition,     &tagging::Symbol::isFileLocal,      &tagging::Symbol::isStatic,
    &tagging::Symbol::isScopedEnum,     &tagging::Symbol::isInline,         &tagging::Symbol::isVirtual,
    &tagging::Symbol::isSpecialization, &tagging::Symbol::isUnknownToCtags,
};

// Does not compile when a symbol has got another field: then that needs a place here, and in the tests' AllAnswers.
[[maybe_unused]] void CountFields(const tagging::Symbol& symbol)
{
    [[maybe_unused]] const auto& [name, scope, type, signature, bases, parameters, target, line, endLine, kind,
                                  scopeKind, access, b1, b2, b3, b4, b5, b6, b7, b8] = symbol;
}
static_assert(static_cast<unsigned>(tagging::kLastSymbolKind) < kEndLine);

unsigned BitsOf(const SymbolRecord& symbol)
{
    unsigned bits = static_cast<unsigned>(symbol.rest.access);
    unsigned bit = kFirstFlag;
    for (bool tagging::Symbol::*const flag : kFlags)
        bits |= unsigned(symbol.rest.*flag) << bit++;
    for (size_t i = SymbolRecord::Scope; i < SymbolRecord::kTexts; i++)
        bits |= unsigned(symbol.texts[i] != 0) << (kFirstText + i - SymbolRecord::Scope);
    return bits;
}

} // namespace

void PutSymbol(std::string& out, const SymbolRecord& symbol)
{
    const unsigned bits = BitsOf(symbol);
    const unsigned kind = static_cast<unsigned>(symbol.rest.kind) | (symbol.rest.endLine != 0 ? kEndLine : 0);
    out.push_back(static_cast<char>(kind));
    out.push_back(static_cast<char>(bits));
    out.push_back(static_cast<char>(bits >> 8));
    PutVarint(out, symbol.texts[SymbolRecord::Name]);
    PutVarint(out, symbol.rest.line);
    if (symbol.texts[SymbolRecord::Scope] != 0)
        out.push_back(static_cast<char>(symbol.rest.scopeKind));
    for (size_t i = SymbolRecord::Scope; i < SymbolRecord::kTexts; i++)
        if (symbol.texts[i] != 0)
            PutVarint(out, symbol.texts[i]);
    if (symbol.rest.endLine != 0)
        PutVarint(out, symbol.rest.endLine);
}

bool ReadSymbol(VarintReader& reader, SymbolRecord* symbol)
{
    constexpr auto kLastKind = static_cast<unsigned>(tagging::kLastSymbolKind);
    *symbol = {};
    const unsigned first = reader.Byte();
    const unsigned kind = first & ~kEndLine;
    unsigned bits = reader.Byte();
    bits |= unsigned(reader.Byte()) << 8;
    symbol->texts[SymbolRecord::Name] = reader.Number();
    symbol->rest.line = reader.Number();
    symbol->rest.kind = static_cast<tagging::SymbolKind>(kind);
    symbol->rest.access = static_cast<tagging::Symbol::Access>(bits & 3);
    const unsigned flags = bits >> kFirstFlag & kAllFlags;
    for (unsigned i = 0; flags >> i != 0; i++) // most have one of the first or none
        symbol->rest.*kFlags[i] = (flags >> i & 1) != 0;
    unsigned scopeKind = 0;
    if ((bits >> kFirstText & 1) != 0)
        scopeKind = reader.Byte();
    symbol->rest.scopeKind = static_cast<tagging::SymbolKind>(scopeKind);
    unsigned texts = bits >> kFirstText;
    for (size_t i = SymbolRecord::Scope; i < SymbolRecord::kTexts; i++, texts >>= 1)
        if ((texts & 1) != 0)
            symbol->texts[i] = reader.Number();
    if ((first & kEndLine) != 0)
        symbol->rest.endLine = reader.Number();
    return !reader.Failed() && kind <= kLastKind && scopeKind <= kLastKind;
}

} // namespace symbols
