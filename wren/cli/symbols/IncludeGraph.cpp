#include "wren/cli/symbols/IncludeGraph.h"

#include <optional>
#include <string_view>

namespace wren {

namespace {

constexpr size_t kMostIncluders = 10'000;

GraphNode NodeOf(std::string_view path)
{
    return {std::string(path), std::string(path), ""};
}

GraphNode MissingNode(const symbols::Include& include)
{
    const std::string name(include.name);
    const std::string shown = include.isAngled ? "<" + name + ">" : "\"" + name + "\"";
    return {shown, shown, ""};
}

bool EndsInPath(std::string_view path, std::string_view end)
{
    return path.ends_with(end) && (path.size() == end.size() || path[path.size() - end.size() - 1] == '/');
}

} // namespace

std::vector<GraphNode> IncludeGraph::Find(const std::string& path, const std::string& name) const
{
    if (snapshot.FindFile(path))
        return {NodeOf(path)};
    std::vector<GraphNode> found;
    for (const symbols::FileNumber file : snapshot.FilesWithLeaf(resolve::FileLeaf(name)))
        if (const std::string_view candidate = snapshot.FileOf(file).path; EndsInPath(candidate, name))
            found.push_back(NodeOf(candidate));
    return found;
}

std::vector<GraphNode> IncludeGraph::Included(const GraphNode& node)
{
    const std::optional<symbols::FileNumber> file = snapshot.FindFile(node.key);
    if (!file)
        return {};
    std::vector<GraphNode> nodes;
    for (const symbols::Include& include : snapshot.IncludesOf(*file)) {
        const std::vector<symbols::FileNumber> found = files.Find(node.key, include);
        nodes.push_back(found.empty() ? MissingNode(include) : NodeOf(snapshot.FileOf(found.front()).path));
    }
    return nodes;
}

std::vector<GraphNode> IncludeGraph::Includers(const GraphNode& node)
{
    const std::optional<symbols::FileNumber> file = snapshot.FindFile(node.key);
    if (!file)
        return {};
    std::vector<GraphNode> nodes;
    for (const symbols::Include& include : snapshot.IncludesOfLeaf(resolve::FileLeaf(node.key), {kMostIncluders})) {
        const std::string_view includer = snapshot.FileOf(include.file).path;
        const std::vector<symbols::FileNumber> found = files.Find(includer, include);
        if (!found.empty() && found.front() == *file)
            nodes.push_back(NodeOf(includer));
    }
    return nodes;
}

} // namespace wren
