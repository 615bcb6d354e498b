#include "wren/cli/symbols/ClassGraph.h"

#include "wren/cli/symbols/SymbolRow.h"
#include "wren/symbols/NamedSymbols.h"
#include "wren/symbols/ShownNames.h"

namespace wren {

namespace {

constexpr size_t kMostDerived = 1000;

void AddName(std::vector<std::string>& names, std::string& name)
{
    const size_t start = name.find_first_not_of(' ');
    if (start != std::string::npos)
        names.push_back(name.substr(start, name.find_last_not_of(' ') + 1 - start));
    name.clear();
}

} // namespace

std::vector<std::string> BaseNames(std::string_view bases)
{
    std::vector<std::string> names;
    std::string name;
    int depth = 0; // of angle brackets
    for (const char c : bases) {
        if (c == ',' && depth == 0)
            AddName(names, name);
        else if (depth == 0 && c != '<')
            name += c;
        depth += c == '<' ? 1 : c == '>' && depth > 0 ? -1 : 0;
    }
    AddName(names, name);
    return names;
}

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
