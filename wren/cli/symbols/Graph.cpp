#include "wren/cli/symbols/Graph.h"

#include <optional>
#include <set>
#include <unordered_map>

namespace wren {

namespace {

class Walk {
public:
    Walk(const Neighbours& neighbours, size_t limit) : neighbours(neighbours), limit(limit) {}

    std::optional<size_t> NumberOf(GraphNode node)
    {
        if (const auto known = numbers.find(node.key); known != numbers.end())
            return known->second;
        if (graph.nodes.size() == limit) {
            graph.more = true;
            return std::nullopt;
        }
        numbers.emplace(node.key, graph.nodes.size());
        graph.nodes.push_back(std::move(node));
        return graph.nodes.size() - 1;
    }

    void Visit(size_t from)
    {
        for (GraphNode& node : neighbours(GraphNode(graph.nodes[from])))
            if (const std::optional<size_t> to = NumberOf(std::move(node)); to && edges.emplace(from, *to).second)
                graph.edges.emplace_back(from, *to);
    }

    Graph graph;

private:
    const Neighbours& neighbours;
    const size_t limit;
    std::unordered_map<std::string, size_t> numbers;
    std::set<std::pair<size_t, size_t>> edges;
};

} // namespace

Graph WalkGraph(std::vector<GraphNode> starts, const Neighbours& neighbours, size_t depth, size_t limit)
{
    Walk walk(neighbours, limit);
    for (GraphNode& start : starts)
        walk.NumberOf(std::move(start));
    walk.graph.starts = walk.graph.nodes.size();
    size_t visited = 0;
    for (size_t step = 0; step < depth; ++step)
        for (const size_t end = walk.graph.nodes.size(); visited < end; ++visited)
            walk.Visit(visited);
    return std::move(walk.graph);
}

} // namespace wren
