#include "tagging/TagsOfSymbols.h"

#include "tagging/SymbolLetters.h"
#include "tagging/ctags/LookupTags.h"

#include <vector>

namespace tagging {

namespace {

bool IsOfObjectiveC(SymbolKind kind)
{
    return kind >= SymbolKind::Interface && kind <= SymbolKind::InstanceVariable;
}

// Kinds that lookups do not know.
bool IsLeftOut(SymbolKind kind, Prototypes prototypes)
{
    switch (kind) {
    case SymbolKind::None:
    case SymbolKind::ExternVariable:
    case SymbolKind::NamespaceAlias:
    case SymbolKind::UsingName:
    case SymbolKind::UsingNamespace:
    case SymbolKind::TemplateParameter:
    case SymbolKind::Local:
    case SymbolKind::Parameter:
    case SymbolKind::MacroParameter:
    case SymbolKind::Label:
        return true;
    case SymbolKind::Prototype:
    case SymbolKind::Slot: // ctags finds these two among the prototypes
    case SymbolKind::Signal:
        return prototypes == Prototypes::LeaveOut;
    default:
        return false;
    }
}

tagsfile::Tag TagOfObjectiveC(const Symbol& symbol, tagsfile::Tags& keeper)
{
    tagsfile::Tag tag = {symbol.name, symbol.line, LetterOf(symbol.kind), ""};
    if (!symbol.scope.empty()) {
        std::string scope(tagsfile::KindOf(tagsfile::kind::kClass).scopeWord);
        tag.scope = keeper.Keep(scope.append(symbol.scope));
    }
    return tag;
}

DeclaredTag DeclaredTagOf(const Symbol& symbol)
{
    DeclaredTag tag;
    tag.name = symbol.name;
    tag.line = symbol.line;
    tag.kind = LetterOf(symbol.kind);
    if (CanBeScope(symbol.scope)) {
        tag.scopeKind = LongName(symbol.scopeKind);
        tag.scope = symbol.scope;
    }
    tag.scopedEnumeration = symbol.isScopedEnum;
    return tag;
}

} // namespace

tagsfile::Tags TagsOf(std::span<const Symbol> symbols, Prototypes prototypes)
{
    tagsfile::Tags result;
    std::vector<DeclaredTag> declared;
    for (const Symbol& symbol : symbols) {
        if (IsOfObjectiveC(symbol.kind))
            result.tags.push_back(TagOfObjectiveC(symbol, result));
        else if (!symbol.isUnknownToCtags && !IsLeftOut(symbol.kind, prototypes) && CanBeTag(symbol.name))
            declared.push_back(DeclaredTagOf(symbol));
    }
    AddLookupTags(declared, result);
    return result;
}

} // namespace tagging
