#include "wren/lsp/features/SymbolItems.h"

#include "resolve/Type.h"
#include "wren/symbols/ShownNames.h"

namespace wren::lsp {

namespace {

using tagging::SymbolKind;

// Values of the protocol's SymbolKind.
enum : int {
    kNamespace = 3,
    kClass = 5,
    kMethod = 6,
    kProperty = 7,
    kField = 8,
    kConstructor = 9,
    kEnum = 10,
    kInterface = 11,
    kFunction = 12,
    kVariable = 13,
    kConstant = 14,
    kKey = 20,
    kEnumMember = 22,
    kStruct = 23,
    kTypeParameter = 26,
};

int KindOfFunction(const tagging::Symbol& symbol)
{
    if (!IsInClass(symbol))
        return kFunction;
    return IsConstructor(symbol) ? kConstructor : kMethod;
}

std::string_view WordFor(SymbolKind kind)
{
    switch (kind) {
    case SymbolKind::Struct:
        return "struct";
    case SymbolKind::Union:
        return "union";
    case SymbolKind::Enum:
        return "enum";
    case SymbolKind::Class:
        return "class";
    case SymbolKind::Namespace:
        return "namespace";
    default:
        return "symbol";
    }
}

} // namespace

bool IsInClass(const tagging::Symbol& symbol)
{
    return symbol.scopeKind == SymbolKind::Class || symbol.scopeKind == SymbolKind::Struct ||
           symbol.scopeKind == SymbolKind::Union;
}

bool IsConstructor(const tagging::Symbol& symbol)
{
    return IsInClass(symbol) && symbol.name == resolve::LeafOf(symbol.scope);
}

int SymbolKindOf(const tagging::Symbol& symbol)
{
    switch (symbol.kind) {
    case SymbolKind::Function:
    case SymbolKind::Prototype:
    case SymbolKind::Slot:
    case SymbolKind::Signal:
        return KindOfFunction(symbol);
    case SymbolKind::Macro:
        return symbol.signature.empty() ? kConstant : kFunction;
    case SymbolKind::Enumerator:
        return kEnumMember;
    case SymbolKind::Enum:
        return kEnum;
    case SymbolKind::Member:
    case SymbolKind::InstanceVariable:
        return kField;
    case SymbolKind::Struct:
    case SymbolKind::Union:
        return kStruct;
    case SymbolKind::Typedef:
    case SymbolKind::Class:
    case SymbolKind::Implementation:
    case SymbolKind::Category:
        return kClass;
    case SymbolKind::Interface:
    case SymbolKind::Protocol:
        return kInterface;
    case SymbolKind::Namespace:
    case SymbolKind::NamespaceAlias:
    case SymbolKind::UsingNamespace:
        return kNamespace;
    case SymbolKind::TemplateParameter:
        return kTypeParameter;
    case SymbolKind::InstanceMethod:
    case SymbolKind::ClassMethod:
    case SymbolKind::InstanceMethodDeclaration:
    case SymbolKind::ClassMethodDeclaration:
        return kMethod;
    case SymbolKind::Property:
    case SymbolKind::QtProperty:
        return kProperty;
    case SymbolKind::UsingName:
    case SymbolKind::Label:
        return kKey;
    default:
        return kVariable;
    }
}

std::string ItemName(const tagging::Symbol& symbol)
{
    if (symbol.name.empty() || WithoutMadeNames(std::string(symbol.name)) != symbol.name)
        return "(anonymous " + std::string(WordFor(symbol.kind)) + ")";
    const bool isOfClass = !symbol.scope.empty();
    if (isOfClass && (symbol.kind == SymbolKind::Category || symbol.kind == SymbolKind::Implementation))
        return std::string(symbol.scope) + " (" + std::string(symbol.name) + ")";
    return std::string(symbol.name);
}

std::string ContainerName(const tagging::Symbol& symbol)
{
    if (symbol.kind == SymbolKind::Category || symbol.kind == SymbolKind::Implementation)
        return "";
    return WithoutMadeNames(std::string(symbol.scope));
}

} // namespace wren::lsp
