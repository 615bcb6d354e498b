#include "resolve/Kinds.h"

#include "resolve/Type.h"

namespace resolve {

bool IsMethod(SymbolKind kind)
{
    return kind == SymbolKind::InstanceMethod || kind == SymbolKind::ClassMethod ||
           kind == SymbolKind::InstanceMethodDeclaration || kind == SymbolKind::ClassMethodDeclaration;
}

bool IsCallable(SymbolKind kind)
{
    return kind == SymbolKind::Function || kind == SymbolKind::Prototype;
}

bool LooksLikeMacroCall(const Symbol& symbol)
{
    return IsCallable(symbol.kind) && symbol.type.empty() && symbol.name != LeafOf(symbol.scope) &&
           !symbol.name.starts_with("operator") && !symbol.name.starts_with('~');
}

bool IsMemberLike(const Symbol& symbol)
{
    switch (symbol.kind) {
    case SymbolKind::Member:
    case SymbolKind::InstanceVariable:
    case SymbolKind::Property:
        return true;
    default:
        return IsMethod(symbol.kind);
    }
}

} // namespace resolve
