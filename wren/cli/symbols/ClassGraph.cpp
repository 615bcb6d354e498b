#include "wren/cli/symbols/ClassGraph.h"

#include "wren/cli/symbols/SymbolRow.h"
#include "wren/symbols/BaseNames.h"
#include "wren/symbols/NamedSymbols.h"
#include "wren/symbols/ShownNames.h"

namespace wren {

namespace {

constexpr size_t kMostDerived = 1000;

} // namespace

GraphNode ClassGraph::NodeOf(const symbols::Symbol& symbol) const
{
    const std::string name = FullName(symbol);
    return {name, WithoutMadeNames(name),
            std::string(snapshot.FileOf(symbol.file).path) + ":" + std::to_string(symbol.line)};
}

std::vector<GraphNode> ClassGraph::Find(const std::string& name) const
{
    std::vector<GraphNode> nodes;
    for (const symbols::Symbol& symbol : NamedSymbols(snapshot, name, IsClass))
        nodes.push_back(NodeOf(symbol));
    return nodes;
}

std::vector<GraphNode> ClassGraph::Derived(const GraphNode& node) const
{
    std::vector<GraphNode> nodes;
    for (const symbols::Symbol& symbol : snapshot.DerivedFrom(LastName(node.key), {kMostDerived}).found)
        nodes.push_back(NodeOf(symbol));
    return nodes;
}

std::vector<GraphNode> ClassGraph::Bases(const GraphNode& node) const
{
    std::vector<GraphNode> nodes;
    for (const symbols::Symbol& symbol : NamedSymbols(snapshot, node.key, IsClass))
        for (const std::string& base : BaseNames(symbol.bases)) {
            const std::vector<symbols::Symbol> found = NamedSymbols(snapshot, base, IsClass);
            nodes.push_back(found.empty() ? GraphNode{base, base, ""} : NodeOf(found.front()));
        }
    return nodes;
}

} // namespace wren
