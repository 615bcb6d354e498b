// Which files include which.
#pragma once

#include "resolve/Distances.h"
#include "symbols/store/Snapshot.h"
#include "wren/cli/symbols/Graph.h"

#include <string>
#include <vector>

namespace wren {

// Keys of nodes are paths in the index; a name in quotes or angle brackets stands for a file that is not there.
class IncludeGraph {
public:
    explicit IncludeGraph(const symbols::Snapshot& snapshot) : snapshot(snapshot), files(snapshot) {} // borrowed

    // The files with this path in the index; else those whose paths end in 'name'.
    std::vector<GraphNode> Find(const std::string& path, const std::string& name) const;

    std::vector<GraphNode> Included(const GraphNode& node);
    std::vector<GraphNode> Includers(const GraphNode& node);

private:
    const symbols::Snapshot& snapshot;
    resolve::IncludedFiles files;
};

} // namespace wren
