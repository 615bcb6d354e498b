#include "wren/cli/symbols/CallGraph.h"

#include "base/Identifier.h"
#include "wren/cli/symbols/SymbolRow.h"
#include "wren/symbols/CallPlaces.h"
#include "wren/symbols/NameColumn.h"
#include "wren/symbols/NamedSymbols.h"
#include "wren/symbols/ShownNames.h"
#include "wren/text/LineIndex.h"

#include <algorithm>
#include <optional>

namespace wren {

namespace {

constexpr size_t kMostCallPlaces = 500; // of one function
constexpr size_t kMostUses = 1000;      // of one function

size_t StartOfLine(std::string_view text, unsigned line) // from 1
{
    LineIndex index;
    return static_cast<size_t>(index.LineStart(text, static_cast<long>(std::max(line, 1u)) - 1));
}

} // namespace

GraphNode CallGraph::NodeOf(const symbols::Symbol& symbol, const std::string& path)
{
    const std::string place = path + ":" + std::to_string(symbol.line);
    const std::string key = place + ":" + std::string(symbol.name);
    functions.insert_or_assign(key, Function{symbol, path});
    return {key, WithoutMadeNames(FullName(symbol)), place};
}

std::vector<GraphNode> CallGraph::Find(const std::string& name)
{
    std::vector<GraphNode> nodes;
    for (const symbols::Symbol& symbol : NamedSymbols(snapshot, name, IsCallable))
        nodes.push_back(NodeOf(symbol, std::string(snapshot.FileOf(symbol.file).path)));
    return nodes;
}

std::vector<GraphNode> CallGraph::Called(const GraphNode& node)
{
    const Function function = functions.at(node.key);
    const std::optional<std::string> text = sources.Read(function.path);
    if (!text || function.symbol.endLine == 0)
        return {};
    const size_t end = StartOfLine(*text, function.symbol.endLine + 1);
    const size_t body = std::min(text->find('{', StartOfLine(*text, function.symbol.line)), end);
    std::vector<GraphNode> nodes;
    for (const size_t place : CallPlaces(*text, body, end, kMostCallPlaces))
        for (const resolve::Answer& answer : resolver.Definition({function.path, *text, place}, {1}).found)
            if (IsCallable(answer.symbol.kind))
                nodes.push_back(NodeOf(answer.symbol, answer.path));
    return nodes;
}

std::vector<GraphNode> CallGraph::Callers(const GraphNode& node)
{
    const Function function = functions.at(node.key);
    const std::optional<std::string> text = sources.Read(function.path);
    if (!text)
        return {};
    const size_t start = StartOfLine(*text, function.symbol.line);
    const std::string_view line = std::string_view(*text).substr(start, text->find('\n', start) - start);
    const size_t place = start + NameColumn(line, function.symbol.name) - 1;
    std::vector<GraphNode> nodes;
    for (const resolve::Use& use : resolver.References({function.path, *text, place}, {kMostUses}).found) {
        const std::optional<symbols::FileNumber> file = snapshot.FindFile(use.path);
        if (use.role != resolve::Use::Role::Call || !file)
            continue;
        if (const std::optional<symbols::Symbol> caller = FunctionAround(snapshot.OfFile(*file), use.line))
            nodes.push_back(NodeOf(*caller, use.path));
    }
    return nodes;
}

} // namespace wren
