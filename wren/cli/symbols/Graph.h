// A graph of files or symbols, bounded in size.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace wren {

struct GraphNode {
    std::string key;    // the same for the same node
    std::string label;  // for the user
    std::string detail; // a tooltip; "" for none
};

struct Graph {
    std::vector<GraphNode> nodes; // nearest first
    size_t starts = 0;            // the first of them, from which the others are reached
    std::vector<std::pair<size_t, size_t>> edges;
    bool more = false; // nodes were left out for the limit
};

// The nodes that one is directly connected to; may have doubles.
using Neighbours = std::function<std::vector<GraphNode>(const GraphNode& node)>;

// All nodes within 'depth' steps of the starts, at most 'limit' of them.
Graph WalkGraph(std::vector<GraphNode> starts, const Neighbours& neighbours, size_t depth, size_t limit);

} // namespace wren
