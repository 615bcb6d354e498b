// Which classes derive from which.
#pragma once

#include "symbols/store/Snapshot.h"
#include "wren/cli/symbols/Graph.h"

#include <string>
#include <vector>

namespace wren {

// Keys of nodes are names with their scopes: a class in several files is one node.
class ClassGraph {
public:
    explicit ClassGraph(const symbols::Snapshot& snapshot) : snapshot(snapshot) {} // borrowed

    std::vector<GraphNode> Find(const std::string& name) const;
    std::vector<GraphNode> Derived(const GraphNode& node) const;
    std::vector<GraphNode> Bases(const GraphNode& node) const;

private:
    GraphNode NodeOf(const symbols::Symbol& symbol) const;

    const symbols::Snapshot& snapshot;
};

} // namespace wren
