#include "wren/lsp/features/SymbolItems.h"

#include "wren/symbols/ShownNames.h"

namespace wren::lsp {

namespace {

using Kind = tagging::SymbolKind;

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

std::string_view LastPart(std::string_view scope)
{
    const size_t colons = scope.rfind("::");
    return colons == std::string_view::npos ? scope : scope.substr(colons + 2);
}

bool IsInClass(const tagging::Symbol& symbol)
{
    return symbol.scopeKind == Kind::Class || symbol.scopeKind == Kind::Struct || symbol.scopeKind == Kind::Union;
}

int KindOfFunction(const tagging::Symbol& symbol)
{
    if (!IsInClass(symbol))
        return kFunction;
    return symbol.name == LastPart(symbol.scope) ? kConstructor : kMethod;
}

std::string_view WordFor(Kind kind)
{
    switch (kind) {
    case Kind::Struct:
        return "struct";
    case Kind::Union:
        return "union";
    case Kind::Enum:
        return "enum";
    case Kind::Class:
        return "class";
    case Kind::Namespace:
        return "namespace";
    default:
        return "symbol";
    }
}

} // namespace

int SymbolKindOf(const tagging::Symbol& symbol)
{
    switch (symbol.kind) {
    case Kind::Function:
    case Kind::Prototype:
    case Kind::Slot:
    case Kind::Signal:
        return KindOfFunction(symbol);
    case Kind::Macro:
        return symbol.signature.empty() ? kConstant : kFunction;
    case Kind::Enumerator:
        return kEnumMember;
    case Kind::Enum:
        return kEnum;
    case Kind::Member:
    case Kind::InstanceVariable:
        return kField;
    case Kind::Struct:
    case Kind::Union:
        return kStruct;
    case Kind::Typedef:
    case Kind::Class:
    case Kind::Implementation:
    case Kind::Category:
        return kClass;
    case Kind::Interface:
    case Kind::Protocol:
        return kInterface;
    case Kind::Namespace:
    case Kind::NamespaceAlias:
    case Kind::UsingNamespace:
        return kNamespace;
    case Kind::TemplateParameter:
        return kTypeParameter;
    case Kind::InstanceMethod:
    case Kind::ClassMethod:
    case Kind::InstanceMethodDeclaration:
    case Kind::ClassMethodDeclaration:
        return kMethod;
    case Kind::Property:
    case Kind::QtProperty:
        return kProperty;
    case Kind::UsingName:
    case Kind::Label:
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
    if (isOfClass && (symbol.kind == Kind::Category || symbol.kind == Kind::Implementation))
        return std::string(symbol.scope) + " (" + std::string(symbol.name) + ")";
    return std::string(symbol.name);
}

std::string ContainerName(const tagging::Symbol& symbol)
{
    if (symbol.kind == Kind::Category || symbol.kind == Kind::Implementation)
        return "";
    return WithoutMadeNames(std::string(symbol.scope));
}

} // namespace wren::lsp
