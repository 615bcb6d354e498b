#include "wren/lsp/features/CompletionItems.h"

#include "wren/lsp/features/SymbolItems.h"
#include "wren/symbols/Signatures.h"

#include <algorithm>

namespace wren::lsp {

namespace {

using tagging::Symbol;
using tagging::SymbolKind;

// Values of the protocol's CompletionItemKind.
enum : int {
    kMethodItem = 2,
    kFunctionItem = 3,
    kConstructorItem = 4,
    kFieldItem = 5,
    kVariableItem = 6,
    kClassItem = 7,
    kInterfaceItem = 8,
    kModuleItem = 9,
    kPropertyItem = 10,
    kEnumItem = 13,
    kEnumMemberItem = 20,
    kConstantItem = 21,
    kStructItem = 22,
    kTypeParameterItem = 25,
};

int KindOfCallable(const Symbol& symbol)
{
    if (!IsInClass(symbol))
        return kFunctionItem;
    return IsConstructor(symbol) ? kConstructorItem : kMethodItem;
}

// The target decides where it says what it is: "struct list".
int KindOfTypedef(const Symbol& symbol)
{
    if (symbol.type.starts_with("enum"))
        return kEnumItem;
    return symbol.type.starts_with("class") ? kClassItem : kStructItem;
}

// "}", "$" and "\" mean something in a snippet.
std::string Escaped(std::string_view text)
{
    std::string escaped;
    for (const char letter : text) {
        if (letter == '}' || letter == '$' || letter == '\\')
            escaped += '\\';
        escaped += letter;
    }
    return escaped;
}

std::string Field(size_t number, std::string_view text)
{
    return "${" + std::to_string(number) + ":" + Escaped(text) + "}";
}

std::string SelectorSnippet(const Symbol& symbol)
{
    const std::vector<std::string_view> parameters = ParametersOf(symbol.signature);
    std::string snippet;
    size_t number = 0;
    for (size_t at = 0; at < symbol.name.size();) {
        const size_t colon = std::min(symbol.name.find(':', at), symbol.name.size() - 1);
        snippet += (number == 0 ? "" : " ") + std::string(symbol.name.substr(at, colon + 1 - at));
        const std::string_view shown = number < parameters.size() ? parameters[number] : "value";
        ++number;
        snippet += Field(number, shown);
        at = colon + 1;
    }
    return snippet;
}

} // namespace

int CompletionKindOf(const Symbol& symbol)
{
    switch (symbol.kind) {
    case SymbolKind::Function:
    case SymbolKind::Prototype:
    case SymbolKind::Slot:
    case SymbolKind::Signal:
        return KindOfCallable(symbol);
    case SymbolKind::InstanceMethod:
    case SymbolKind::ClassMethod:
    case SymbolKind::InstanceMethodDeclaration:
    case SymbolKind::ClassMethodDeclaration:
        return kMethodItem;
    case SymbolKind::Macro:
        return symbol.signature.empty() ? kConstantItem : kFunctionItem;
    case SymbolKind::Enumerator:
        return kEnumMemberItem;
    case SymbolKind::Enum:
        return kEnumItem;
    case SymbolKind::Member:
    case SymbolKind::InstanceVariable:
        return kFieldItem;
    case SymbolKind::Property:
    case SymbolKind::QtProperty:
        return kPropertyItem;
    case SymbolKind::Struct:
    case SymbolKind::Union:
        return kStructItem;
    case SymbolKind::Class:
    case SymbolKind::Implementation:
    case SymbolKind::Category:
        return kClassItem;
    case SymbolKind::Interface:
    case SymbolKind::Protocol:
        return kInterfaceItem;
    case SymbolKind::Typedef:
        return KindOfTypedef(symbol);
    case SymbolKind::Namespace:
    case SymbolKind::NamespaceAlias:
    case SymbolKind::UsingNamespace:
        return kModuleItem;
    case SymbolKind::TemplateParameter:
        return kTypeParameterItem;
    default:
        return kVariableItem;
    }
}

std::string SnippetOf(const Symbol& symbol)
{
    if (symbol.name.ends_with(':'))
        return SelectorSnippet(symbol);
    const int kind = CompletionKindOf(symbol);
    const bool isMessage = symbol.kind == SymbolKind::InstanceMethod || symbol.kind == SymbolKind::ClassMethod ||
                           symbol.kind == SymbolKind::InstanceMethodDeclaration ||
                           symbol.kind == SymbolKind::ClassMethodDeclaration;
    if (isMessage || (kind != kFunctionItem && kind != kMethodItem) || symbol.signature.empty())
        return "";
    std::string fields;
    size_t number = 0;
    for (const std::string_view parameter : ParametersOf(symbol.signature)) {
        ++number;
        fields += (number == 1 ? "" : ", ") + Field(number, parameter);
    }
    return Escaped(symbol.name) + "(" + fields + ")";
}

} // namespace wren::lsp
