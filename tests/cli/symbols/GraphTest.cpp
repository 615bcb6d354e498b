#include "wren/cli/symbols/Graph.h"

#include <gtest/gtest.h>
#include <map>

namespace {

using wren::Graph;
using wren::GraphNode;

// Nodes have one letter; "ab" means that b is a neighbour of a.
Graph WalkFrom(const std::string& starts, const std::vector<std::string>& edges, size_t depth, size_t limit)
{
    const auto node = [](char name) { return GraphNode{std::string(1, name), "", ""}; };
    std::vector<GraphNode> first;
    for (const char start : starts)
        first.push_back(node(start));
    return wren::WalkGraph(
        first,
        [&](const GraphNode& from) {
            std::vector<GraphNode> to;
            for (const std::string& edge : edges)
                if (edge[0] == from.key[0])
                    to.push_back(node(edge[1]));
            return to;
        },
        depth, limit);
}

std::string Nodes(const Graph& graph)
{
    std::string names;
    for (const GraphNode& node : graph.nodes)
        names += node.key;
    return names;
}

std::string Edges(const Graph& graph)
{
    std::string names;
    for (const auto& [from, to] : graph.edges)
        names += graph.nodes[from].key + graph.nodes[to].key + " ";
    return names;
}

} // namespace

TEST(WalkGraph, ListsTheNearestFirst)
{
    EXPECT_EQ(Nodes(WalkFrom("a", {"ab", "ac", "bd", "ce", "ef"}, 9, 100)), "abcdef");
}

TEST(WalkGraph, StopsAtTheDepth)
{
    const Graph graph = WalkFrom("a", {"ab", "bc", "cd"}, 2, 100);
    EXPECT_EQ(Nodes(graph), "abc");
    EXPECT_FALSE(graph.more);
    EXPECT_EQ(Nodes(WalkFrom("a", {"ab"}, 0, 100)), "a");
}

TEST(WalkGraph, StopsAtTheLimitAndReportsIt)
{
    const Graph graph = WalkFrom("a", {"ab", "ac", "ad", "cb"}, 9, 3);
    EXPECT_EQ(Nodes(graph), "abc");
    EXPECT_EQ(Edges(graph), "ab ac cb ") << "edges between the nodes that are there";
    EXPECT_TRUE(graph.more);
}

TEST(WalkGraph, EndsForCircles)
{
    const Graph graph = WalkFrom("a", {"ab", "ba", "aa"}, 1000, 100);
    EXPECT_EQ(Nodes(graph), "ab");
    EXPECT_EQ(Edges(graph), "ab aa ba ");
}

TEST(WalkGraph, DropsDoubleStartsAndEdges)
{
    const Graph graph = WalkFrom("aba", {"ac", "ac", "bc"}, 1, 100);
    EXPECT_EQ(graph.starts, 2u);
    EXPECT_EQ(Edges(graph), "ac bc ");
}
