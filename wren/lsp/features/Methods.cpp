#include "wren/lsp/features/Methods.h"

#include "wren/lsp/features/Commands.h"
#include "wren/lsp/features/Completion.h"
#include "wren/lsp/features/DocumentSymbols.h"
#include "wren/lsp/features/FoldingRanges.h"
#include "wren/lsp/features/Goto.h"
#include "wren/lsp/features/Hierarchies.h"
#include "wren/lsp/features/Hover.h"
#include "wren/lsp/features/References.h"
#include "wren/lsp/features/Rename.h"
#include "wren/lsp/features/SelectionRanges.h"
#include "wren/lsp/features/SignatureHelp.h"
#include "wren/lsp/features/SwitchSourceHeader.h"
#include "wren/lsp/features/WorkspaceSymbols.h"

#include <algorithm>
#include <iterator>

namespace wren::lsp {

namespace {

template <class Params, class Result, Result (*answer)(const Params&, const RequestContext&)>
Json Typed(const Json& params, const RequestContext& context)
{
    return answer(params.get<Params>(), context);
}

// A row for a function that takes typed parameters; from_json() of those checks them.
template <auto answer>
struct Row;

template <class Params, class Result, Result (*answer)(const Params&, const RequestContext&)>
struct Row<answer> {
    static constexpr Handler kHandler = Typed<Params, Result, answer>;
};

constexpr struct {
    std::string_view method;
    Handler handler;
} kMethods[] = {
    {"textDocument/definition", Row<Definition>::kHandler},
    {"textDocument/declaration", Row<Declaration>::kHandler},
    {"textDocument/completion", Row<Completion>::kHandler},
    {"completionItem/resolve", Row<ResolveCompletion>::kHandler},
    {"textDocument/typeDefinition", Row<TypeDefinition>::kHandler},
    {"textDocument/implementation", Row<Implementation>::kHandler},
    {"textDocument/references", Row<References>::kHandler},
    {"textDocument/documentHighlight", Row<Highlights>::kHandler},
    {"textDocument/hover", Row<Hover>::kHandler},
    {"textDocument/prepareRename", Row<PrepareRename>::kHandler},
    {"textDocument/rename", Row<Rename>::kHandler},
    {"textDocument/switchSourceHeader", Row<SwitchSourceHeader>::kHandler},
    {"textDocument/prepareCallHierarchy", Row<PrepareCallHierarchy>::kHandler},
    {"callHierarchy/incomingCalls", Row<IncomingCalls>::kHandler},
    {"callHierarchy/outgoingCalls", Row<OutgoingCalls>::kHandler},
    {"textDocument/prepareTypeHierarchy", Row<PrepareTypeHierarchy>::kHandler},
    {"typeHierarchy/supertypes", Row<Supertypes>::kHandler},
    {"typeHierarchy/subtypes", Row<Subtypes>::kHandler},
    {"textDocument/documentSymbol", Row<DocumentSymbols>::kHandler},
    {"textDocument/foldingRange", Row<FoldingRanges>::kHandler},
    {"textDocument/selectionRange", Row<SelectionRanges>::kHandler},
    {"workspace/executeCommand", Row<ExecuteCommand>::kHandler},
    {"textDocument/signatureHelp", Row<SignatureHelp>::kHandler},
    {"workspace/symbol", Row<WorkspaceSymbols>::kHandler},
    {"workspaceSymbol/resolve", Row<ResolveWorkspaceSymbol>::kHandler},
};

} // namespace

Handler HandlerOf(std::string_view method)
{
    const auto* const found =
        std::find_if(std::begin(kMethods), std::end(kMethods), [&](const auto& each) { return each.method == method; });
    return found == std::end(kMethods) ? nullptr : found->handler;
}

bool IsLong(std::string_view method, const Json& params)
{
    return method == "workspace/executeCommand" && params.is_object() &&
           params.value("command", Json()) != kStatusCommand;
}

Json ServerCapabilities(const ClientAbilities& client)
{
    Json capabilities = {
        {"positionEncoding", client.Encoding() == Encoding::Utf8 ? "utf-8" : "utf-16"},
        {"textDocumentSync", {{"openClose", true}, {"change", 2}, {"save", {{"includeText", true}}}}},
        {"definitionProvider", true},
        {"declarationProvider", true},
        {"completionProvider",
         {{"triggerCharacters", {".", ">", ":", "\"", "<", "/", "[", " "}}, {"resolveProvider", true}}},
        {"signatureHelpProvider", {{"triggerCharacters", {"(", ","}}}},
        {"typeDefinitionProvider", true},
        {"implementationProvider", true},
        {"referencesProvider", true},
        {"documentHighlightProvider", true},
        {"hoverProvider", true},
        {"renameProvider", RenameProvider(client)},
        {"callHierarchyProvider", true},
        {"typeHierarchyProvider", true},
        {"documentSymbolProvider", true},
        {"foldingRangeProvider", true},
        {"selectionRangeProvider", true},
        {"executeCommandProvider", {{"commands", {kIndexCommand, kTagsCommand, kStatusCommand}}}},
        {"workspace", {{"workspaceFolders", {{"supported", true}, {"changeNotifications", true}}}}},
        {"workspaceSymbolProvider", {{"resolveProvider", true}}},
    };
    return capabilities;
}

} // namespace wren::lsp
