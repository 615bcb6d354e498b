// Completes at places of a project, for bench/accuracy.
//
// Usage: resolve_answers ROOT COUNT <QUESTIONS
//
// A question is a line of JSON: the path below ROOT, the caret's offset in bytes, and how many bytes after it are cut
// from the text first. The answer is a line with the first COUNT names, and the microseconds that it took.
#include "base/CancelToken.h"
#include "resolve/Resolver.h"
#include "symbols/Index.h"
#include "symbols/Workspace.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>

namespace {

class WorkspaceSources : public resolve::Sources {
public:
    explicit WorkspaceSources(const symbols::Workspace& workspace) : workspace(workspace) {}
    std::optional<std::string> Read(const std::string& path) const override { return workspace.Read(path); }

private:
    const symbols::Workspace& workspace;
};

void MakeCurrent(symbols::Index& index)
{
    const base::CancelToken never;
    if (const auto updated = index.Update({}, never); !updated) {
        std::cerr << index.Root() << ": " << updated.Failure().Message() << "\n";
        std::exit(1);
    }
}

nlohmann::json Answer(symbols::Workspace& workspace, const nlohmann::json& question, size_t count)
{
    const std::string path = question["path"];
    std::string text = workspace.Read(path).value_or("");
    const size_t offset = question["offset"];
    text.erase(std::min(offset, text.size()), question["cut"]);
    const WorkspaceSources sources(workspace);
    const auto start = std::chrono::steady_clock::now();
    const symbols::SnapshotPointer snapshot = workspace.Current();
    const resolve::Resolver resolver(*snapshot, sources, workspace.Parser());
    const resolve::Candidates candidates = resolver.Complete({path, text, offset}, {.results = count});
    const auto taken = std::chrono::steady_clock::now() - start;
    nlohmann::json names = nlohmann::json::array();
    for (const resolve::Candidate& candidate : candidates.found)
        names.push_back(candidate.symbol.name);
    return {{"names", names}, {"microseconds", std::chrono::duration_cast<std::chrono::microseconds>(taken).count()}};
}

} // namespace

int main(int count, char** words)
{
    if (count != 3) {
        std::cerr << "usage: resolve_answers ROOT COUNT <QUESTIONS\n";
        return 2;
    }
    const base::Result<tagging::Settings> settings = symbols::IndexSettings();
    if (!settings) {
        std::cerr << settings.Failure().Message() << "\n";
        return 1;
    }
    symbols::Workspace workspace({.root = std::filesystem::canonical(words[1]), .cache = "", .tagging = *settings});
    MakeCurrent(*workspace.Project());
    if (symbols::Index* system = workspace.System())
        MakeCurrent(*system);
    for (std::string line; std::getline(std::cin, line);)
        std::cout << Answer(workspace, nlohmann::json::parse(line), std::strtoul(words[2], nullptr, 10)) << "\n";
}
