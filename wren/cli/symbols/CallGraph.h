// Which functions call which.
#pragma once

#include "resolve/Resolver.h"
#include "symbols/store/Snapshot.h"
#include "wren/cli/symbols/Graph.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace wren {

// Calls are names before parentheses, and messages, and mean what the resolver says. Keys of nodes are places.
class CallGraph {
public:
    CallGraph(const symbols::Snapshot& snapshot, const resolve::Sources& sources, const resolve::Resolver& resolver)
        : snapshot(snapshot), sources(sources), resolver(resolver)
    {
    } // borrowed

    std::vector<GraphNode> Find(const std::string& name);
    std::vector<GraphNode> Called(const GraphNode& node);
    std::vector<GraphNode> Callers(const GraphNode& node);

private:
    struct Function {
        symbols::Symbol symbol;
        std::string path; // as in the index
    };

    GraphNode NodeOf(const symbols::Symbol& symbol, const std::string& path);

    const symbols::Snapshot& snapshot;
    const resolve::Sources& sources;
    const resolve::Resolver& resolver;
    std::map<std::string, Function> functions; // by key
};

} // namespace wren
