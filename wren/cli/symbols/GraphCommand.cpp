#include "wren/cli/symbols/SymbolCommands.h"

#include "base/ExitStatus.h"
#include "resolve/ParsedText.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/symbols/CallGraph.h"
#include "wren/cli/symbols/ClassGraph.h"
#include "wren/cli/symbols/Dot.h"
#include "wren/cli/symbols/IncludeGraph.h"
#include "wren/cli/symbols/SymbolWords.h"
#include "wren/core/ProgramOutput.h"
#include "wren/symbols/WorkspaceSources.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <string>

namespace wren {

namespace {

constexpr size_t kDepth = 3;
constexpr size_t kMostNodes = 100;

constexpr const char* kGraphHelp =
    R"(Prints a graph in Graphviz' language, or has Graphviz draw it. What is drawn begins at NAME:

    includes FILE    the files that it includes; with --up, the files that include it
    calls NAME       the functions that it calls; with --up, the functions that call it
    classes NAME     the classes derived from it; with --up, its bases

A file may be given by the end of its path, and a name with the end of its scope ("Outer::f").
The nearest come first: --depth is the number of steps, and --limit the number of boxes.

Exit status: 0 a graph was printed, 1 there is no such file or name, 2 wrong usage, no index can
be made, or Graphviz is not installed.

Examples:
    wren graph includes src/main.cpp --depth 2 | dot -Tsvg >includes.svg
    wren graph calls Outer::f --up --format svg >callers.svg
    wren graph classes Shape --format png >shapes.png)";

struct GraphWords {
    SymbolWords common;
    std::string what;
    std::string name;
    std::string format = "dot";
    size_t depth = kDepth;
    bool up = false;
};

Graph IncludesGraph(const GraphWords& words, const symbols::Workspace& workspace, const symbols::Snapshot& snapshot)
{
    IncludeGraph graph(snapshot);
    std::error_code unknown;
    const std::string path = std::filesystem::weakly_canonical(words.name, unknown);
    return WalkGraph(
        graph.Find(workspace.PathInIndex(path), words.name),
        [&](const GraphNode& node) { return words.up ? graph.Includers(node) : graph.Included(node); }, words.depth,
        words.common.limit);
}

Graph CallsGraph(const GraphWords& words, symbols::Workspace& workspace, const symbols::Snapshot& snapshot)
{
    const WorkspaceSources sources(workspace);
    resolve::ParsedTexts texts; // many calls are in the same text
    const resolve::Resolver resolver(snapshot, sources, workspace.Parser(), &texts);
    CallGraph graph(snapshot, sources, resolver);
    return WalkGraph(
        graph.Find(words.name),
        [&](const GraphNode& node) { return words.up ? graph.Callers(node) : graph.Called(node); }, words.depth,
        words.common.limit);
}

Graph ClassesGraph(const GraphWords& words, const symbols::Snapshot& snapshot)
{
    const ClassGraph graph(snapshot);
    return WalkGraph(
        graph.Find(words.name),
        [&](const GraphNode& node) { return words.up ? graph.Bases(node) : graph.Derived(node); }, words.depth,
        words.common.limit);
}

Graph GraphFor(const GraphWords& words, symbols::Workspace& workspace)
{
    const symbols::SnapshotPointer snapshot = workspace.Current();
    if (words.what == "includes")
        return IncludesGraph(words, workspace, *snapshot);
    return words.what == "calls" ? CallsGraph(words, workspace, *snapshot) : ClassesGraph(words, *snapshot);
}

// Arrows lead from the including file, the calling function and the derived class.
bool PointsToStart(const GraphWords& words)
{
    return words.up != (words.what == "classes");
}

int RunGraph(const GraphWords& words)
{
    ProgramOutput output;
    CurrentIndexes indexes(words.common);
    const base::Result<CurrentIndex*> index = indexes.ForDirectory();
    if (!index)
        return Unusable(index.Failure());
    const Graph graph = GraphFor(words, (*index)->Workspace());
    if (graph.nodes.empty()) {
        Complain("there is no " +
                 std::string(words.what == "includes" ? "file"
                             : words.what == "calls"  ? "function"
                                                      : "class") +
                 " \"" + words.name + "\" in the index");
        return base::exit_status::kNothing;
    }
    const std::string dot = DotText(graph, words.what + " " + words.name, PointsToStart(words));
    const base::Result<std::string> drawn = words.format == "dot" ? dot : DrawDot(dot, words.format);
    if (!drawn)
        return Unusable(drawn.Failure());
    if (!WriteAsIsOrComplain(output, *drawn, "the graph"))
        return base::exit_status::kUnusable;
    if (graph.more)
        Complain("the graph has only the nearest " + std::to_string(graph.nodes.size()) + "; there are more (--limit)");
    return base::exit_status::kDone;
}

} // namespace

void AddGraphCommand(CLI::App& app, int* status)
{
    CLI::App* command = app.add_subcommand("graph", "Draw what includes, calls or derives from what");
    auto words = std::make_shared<GraphWords>();
    words->common.limit = kMostNodes;
    words->common.index.withSystem = false;
    command->add_option("what", words->what, "includes, calls or classes")
        ->required()
        ->check(CLI::IsMember({"includes", "calls", "classes"}));
    command->add_option("name", words->name, "The file or the name where it begins")->required();
    command->add_flag("--up", words->up, "In the other direction");
    command->add_option("--depth", words->depth, "The number of steps (default: 3)")
        ->check(CLI::Range(size_t{0}, size_t{1000}));
    command->add_option("--limit", words->common.limit, "At most that many boxes (default: 100)")
        ->check(CLI::Range(size_t{1}, size_t{10'000}));
    command->add_option("--format", words->format, "dot, svg or png (default: dot)")
        ->check(CLI::IsMember({"dot", "svg", "png"}));
    AddTreeOptions(*command, words->common);
    command->add_flag("--system", words->common.index.withSystem, "Also with the headers of the system");
    command->footer(kGraphHelp);
    command->callback([words, status] { *status = RunGraph(*words); });
}

} // namespace wren
