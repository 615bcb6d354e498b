#include "wren/lsp/features/DocumentSymbols.h"

#include "resolve/ParsedText.h"
#include "wren/lsp/features/SymbolItems.h"
#include "wren/lsp/session/Subject.h"
#include "wren/symbols/DeclarationRange.h"
#include "wren/symbols/Outline.h"
#include "wren/symbols/ShownNames.h"
#include "wren/symbols/Signatures.h"

#include <algorithm>
#include <string>
#include <vector>

namespace wren::lsp {

namespace {

using tagging::Symbol;
using tagging::SymbolKind;

bool IsShown(const Symbol& symbol)
{
    switch (symbol.kind) {
    case SymbolKind::Local:
    case SymbolKind::Parameter:
    case SymbolKind::MacroParameter:
    case SymbolKind::TemplateParameter:
    case SymbolKind::Label:
    case SymbolKind::UsingName:
    case SymbolKind::UsingNamespace:
        return false;
    default:
        return true;
    }
}

struct Placed {
    Range extent;
    Range name;
};

class SymbolsOfText {
public:
    explicit SymbolsOfText(const Subject& subject) : subject(subject), text(subject.Text()) {}

    Json Tree(const std::vector<OutlineNode>& nodes, bool isTop) const
    {
        Json items = Json::array();
        for (const OutlineNode& node : nodes)
            items.push_back(Item(node, isTop));
        return items;
    }

    void AddFlat(const std::vector<OutlineNode>& nodes, bool isTop, Json& items) const
    {
        for (const OutlineNode& node : nodes) {
            Json item = {{"name", NameOf(*node.symbol, isTop)}, {"kind", SymbolKindOf(*node.symbol)}};
            item["location"] = Location{subject.Uri(), PlaceOf(*node.symbol).extent};
            if (const std::string container = ContainerName(*node.symbol); !isTop && !container.empty())
                item["containerName"] = container;
            items.push_back(std::move(item));
            AddFlat(node.children, false, items);
        }
    }

private:
    // A member that is defined outside of its class stands at the top with its class.
    static std::string NameOf(const Symbol& symbol, bool isTop)
    {
        const std::string container = isTop ? ContainerName(symbol) : "";
        return container.empty() ? ItemName(symbol) : container + "::" + ItemName(symbol);
    }

    // A body that only the parser has seen whole, by its last line, is part of the extent, too.
    Placed PlaceOf(const Symbol& symbol) const
    {
        const DeclarationRange range = RangeOfDeclaration(symbol, text.Source());
        const size_t last = text.Source().LineStart(symbol.endLine) + text.Source().Line(symbol.endLine).size();
        const bool isLonger = symbol.endLine > text.Source().LineAt(range.end);
        const Encoding encoding = subject.Encoding();
        return {text.RangeOf(range.start, isLonger ? last : range.end, encoding),
                text.RangeOf(range.nameStart, range.nameEnd, encoding)};
    }

    Json Item(const OutlineNode& node, bool isTop) const
    {
        const Symbol& symbol = *node.symbol;
        const Placed placed = PlaceOf(symbol);
        Json item = {{"name", NameOf(symbol, isTop)},
                     {"kind", SymbolKindOf(symbol)},
                     {"range", placed.extent},
                     {"selectionRange", placed.name}};
        if (!symbol.type.empty() || !symbol.signature.empty())
            item["detail"] = WithoutMadeNames(std::string(symbol.type) + WithBlanksBehindCommas(symbol.signature));
        if (!node.children.empty())
            item["children"] = Tree(node.children, false);
        return item;
    }

    const Subject& subject;
    const Text& text;
};

} // namespace

Json DocumentSymbols(const TextDocumentParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    if (!subject.IsSource())
        return Json::array();
    const resolve::ParsedTextPointer parsed = subject.Parsed();
    std::vector<Symbol> shown;
    std::ranges::copy_if(parsed->parsed->symbols, std::back_inserter(shown), IsShown);
    const std::vector<OutlineNode> nodes = OutlineOf(shown);
    const SymbolsOfText symbols(subject);
    if (context.client.Can("textDocument/documentSymbol/hierarchicalDocumentSymbolSupport"))
        return symbols.Tree(nodes, true);
    Json items = Json::array();
    symbols.AddFlat(nodes, true, items);
    return items;
}

} // namespace wren::lsp
