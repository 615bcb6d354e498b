#include "tagging/SourceReader.h"

#include "tagging/HiddenDeclarations.h"
#include "tagging/SourceFamily.h"
#include "tagging/SymbolLetters.h"
#include "tagging/SymbolOutput.h"
#include "tagging/objectivec/ObjectiveC.h"
#include "tagging/tokens/Dialect.h"

#include <algorithm>
#include <unordered_set>

namespace tagging {

namespace {

using Says = NameOfSource::Says;

Symbol::Access AccessOf(ObjectiveCDetails::Access access)
{
    switch (access) {
    case ObjectiveCDetails::Access::Public:
        return Symbol::Access::Public;
    case ObjectiveCDetails::Access::Protected:
        return Symbol::Access::Protected;
    case ObjectiveCDetails::Access::Private:
        return Symbol::Access::Private;
    case ObjectiveCDetails::Access::None:
        break;
    }
    return Symbol::Access::None;
}

Symbol SymbolOf(const tagsfile::Tag& tag, const ObjectiveCDetails& details, base::TextPool& texts)
{
    Symbol symbol;
    symbol.name = texts.Put(tag.name);
    symbol.kind = KindOfObjectiveCLetter(tag.kind);
    symbol.line = tag.line;
    symbol.endLine = details.endLine;
    if (!tag.scope.empty()) {
        symbol.scope = texts.Put(tag.scope.substr(tag.scope.find(':') + 1));
        symbol.scopeKind = SymbolKind::Class;
    }
    symbol.type = texts.Put(details.type);
    symbol.signature = texts.Put(details.signature);
    symbol.bases = texts.Put(details.bases);
    symbol.templateParameters = texts.Put(details.parameters);
    symbol.target = texts.Put(details.category);
    symbol.access = AccessOf(details.access);
    symbol.isDefinition = symbol.kind != SymbolKind::Interface && symbol.kind != SymbolKind::Category &&
                          symbol.kind != SymbolKind::InstanceMethodDeclaration &&
                          symbol.kind != SymbolKind::ClassMethodDeclaration;
    return symbol;
}

void AddObjectiveC(const ObjectiveCSource& read, ParsedSource& source)
{
    for (size_t i = 0; i < read.tags.tags.size(); ++i)
        source.symbols.push_back(SymbolOf(read.tags.tags[i], read.details[i], source.texts));
}

Include IncludeOf(const Facts::Include& found, base::TextPool& texts)
{
    if (found.form != Facts::Include::Form::Module)
        return {texts.Put(found.name), found.line, found.form == Facts::Include::Form::Angled};
    std::string path(found.name);
    std::replace(path.begin(), path.end(), '.', '/');
    return {texts.Put(path), found.line, true};
}

Symbol MacroOf(const Facts::Define& found, base::TextPool& texts)
{
    Symbol macro;
    macro.name = texts.Put(found.name);
    macro.signature = texts.Put(found.parameters);
    macro.line = found.line;
    macro.kind = SymbolKind::Macro;
    macro.isDefinition = true;
    macro.isFileLocal = true;
    macro.isUnknownToCtags = true;
    return macro;
}

Says SaysOf(Language language)
{
    switch (language) {
    case Language::C:
        return Says::C;
    case Language::Cplusplus:
        return Says::Cplusplus;
    case Language::ObjectiveC:
        return Says::ObjectiveC;
    case Language::ObjectiveCplusplus:
        return Says::ObjectiveCplusplus;
    }
    return Says::Nothing;
}

bool IsAnonymousScope(std::string_view scope)
{
    return scope.find("__anon") != std::string_view::npos;
}

// Whether other sources cannot see it. ctags' "file" says little of declarations, and nothing of unnamed namespaces.
bool IsLocal(const Symbol& symbol, bool isHeader)
{
    if (isHeader)
        return false;
    const bool isInClass = symbol.scopeKind == SymbolKind::Class || symbol.scopeKind == SymbolKind::Struct ||
                           symbol.scopeKind == SymbolKind::Union;
    switch (symbol.kind) {
    case SymbolKind::Prototype:
    case SymbolKind::Slot:
    case SymbolKind::Signal:
        return symbol.isStatic || isInClass || IsAnonymousScope(symbol.scope);
    case SymbolKind::ExternVariable:
        return false;
    case SymbolKind::Namespace:
        return IsAnonymousScope(symbol.name);
    default:
        return symbol.isFileLocal || IsAnonymousScope(symbol.scope);
    }
}

} // namespace

HalfParsed SourceReader::Read(std::string_view path, std::string_view text, std::optional<Language> language)
{
    HalfParsed half;
    half.source = std::make_unique<ParsedSource>();
    ParsedSource& source = *half.source;
    NameOfSource name = ReadNameOfSource(path);
    if (language && !path.ends_with(".h"))
        name.says = SaysOf(*language);
    const Facts facts = finder.Find(text);
    const bool mayBeObjectiveC =
        name.says == Says::ObjectiveC || name.says == Says::ObjectiveCplusplus || name.says == Says::Nothing;
    bool isObjectiveC = name.says == Says::ObjectiveC || name.says == Says::ObjectiveCplusplus;
    if (isObjectiveC || (mayBeObjectiveC && facts.hasObjectiveC)) {
        ObjectiveCSource read = ReadObjectiveC(text, settings.ignoredMacros, Details::Yes);
        isObjectiveC |= read.rest != text;
        AddObjectiveC(read, source);
        if (read.rest != text)
            half.rest = std::move(read.rest);
    }
    const bool isCplusplus = name.says == Says::Cplusplus || name.says == Says::ObjectiveCplusplus ||
                             (name.says == Says::Nothing && facts.mayBeCplusplus && IsCplusplus(text));
    source.language = isObjectiveC ? (isCplusplus ? Language::ObjectiveCplusplus : Language::ObjectiveC)
                                   : (isCplusplus ? Language::Cplusplus : Language::C);
    source.contentHash = ContentHash(text);
    for (const Facts::Include& include : facts.includes)
        source.includes.push_back(IncludeOf(include, source.texts));
    source.names.reserve(facts.names.size());
    for (const std::string_view each : facts.names)
        source.names.push_back(source.texts.Put(each));
    if (!isCplusplus)
        for (const std::string_view each : facts.cplusplusKeywords)
            source.names.push_back(source.texts.Put(each));
    for (const Facts::Using& each : facts.usings)
        half.usings.push_back({std::string(each.what), each.line});
    for (const Facts::Define& define : facts.defines)
        half.macros.push_back(MacroOf(define, source.texts));
    // Headers go to the parser of C++, which reads both.
    half.parser = name.says == Says::C || name.says == Says::ObjectiveC ? Parser::C : Parser::Cplusplus;
    half.isHeader = name.isHeader;
    if (isCplusplus)
        half.repaired = RepairCplusplus(half.rest ? *half.rest : text);
    return half;
}

std::unique_ptr<ParsedSource> HalfParsed::With(std::string_view output, std::string_view more)
{
    for (const Symbol& symbol : ReadSymbols(output, source->texts)) {
        Add(symbol);
        if (const std::optional<Symbol> hidden = DeclarationBefore(source->symbols.back()))
            source->symbols.push_back(*hidden);
    }
    AddMissingMacros();
    AddMore(more);
    std::stable_sort(source->symbols.begin(), source->symbols.end(),
                     [](const Symbol& a, const Symbol& b) { return a.line < b.line; });
    return std::move(source);
}

void HalfParsed::Add(Symbol symbol)
{
    symbol.isFileLocal = IsLocal(symbol, isHeader);
    if (symbol.kind == SymbolKind::UsingName)
        for (const Using& each : usings)
            if (each.line == symbol.line && each.what.ends_with(symbol.name))
                symbol.target = source->texts.Put(each.what);
    source->symbols.push_back(symbol);
}

// Only what the first output lacks.
void HalfParsed::AddMore(std::string_view output)
{
    if (output.empty())
        return;
    std::unordered_set<std::string> known;
    const auto keyOf = [](const Symbol& symbol) {
        return std::to_string(symbol.line) + ' ' + std::string(symbol.name);
    };
    for (const Symbol& symbol : source->symbols)
        known.insert(keyOf(symbol));
    for (Symbol& symbol : ReadSymbols(output, source->texts)) {
        if (known.contains(keyOf(symbol)))
            continue;
        symbol.isUnknownToCtags = true;
        symbol.templateParameters = TemplateParameters(symbol);
        Add(symbol);
    }
}

// The template that was taken out shortly before the symbol.
std::string_view HalfParsed::TemplateParameters(const Symbol& symbol)
{
    constexpr unsigned kMostLines = 5;
    const bool isCallable = symbol.kind == SymbolKind::Function || symbol.kind == SymbolKind::Prototype;
    const auto after =
        std::upper_bound(repaired->templates.begin(), repaired->templates.end(), symbol.line,
                         [](unsigned line, const RepairedText::Template& each) { return line < each.line; });
    const bool isNear = after != repaired->templates.begin() && std::prev(after)->line + kMostLines > symbol.line;
    return isCallable && isNear ? source->texts.Put(std::prev(after)->parameters) : symbol.templateParameters;
}

void HalfParsed::AddMissingMacros()
{
    if (macros.empty())
        return;
    std::unordered_set<unsigned> known; // lines: each has at most one
    for (const Symbol& symbol : source->symbols)
        if (symbol.kind == SymbolKind::Macro)
            known.insert(symbol.line);
    for (Symbol& macro : macros) {
        macro.isFileLocal = IsLocal(macro, isHeader);
        if (!known.contains(macro.line))
            source->symbols.push_back(macro);
    }
}

} // namespace tagging
