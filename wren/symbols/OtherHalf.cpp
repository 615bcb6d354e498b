#include "wren/symbols/OtherHalf.h"

#include "resolve/Distances.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <tuple>
#include <vector>

namespace wren {

namespace {

constexpr std::string_view kHeaders[] = {".h", ".hh", ".hpp", ".hxx", ".h++", ".H"};
constexpr std::string_view kSources[] = {".c", ".cc", ".cpp", ".cxx", ".c++", ".C", ".m", ".mm"};
constexpr size_t kMostSymbols = 300; // of the text
constexpr size_t kMostNamesakes = 30;

std::string_view StemOf(std::string_view path)
{
    const std::string_view leaf = resolve::FileLeaf(path);
    return leaf.substr(0, leaf.rfind('.'));
}

// Of two that fit otherwise, the first suffix counts; the index holds the names of files as text.
std::vector<std::string> LeavesOfOther(std::string_view path)
{
    std::vector<std::string> leaves;
    const auto add = [&](const auto& suffixes) {
        for (const std::string_view suffix : suffixes)
            leaves.push_back(std::string(StemOf(path)) + std::string(suffix));
    };
    if (resolve::IsHeaderPath(path))
        add(kSources);
    else
        add(kHeaders);
    return leaves;
}

std::map<std::string, size_t> SharedSymbols(const OneHalf& half)
{
    std::map<std::string, size_t> shared; // by the file's path
    const symbols::Snapshot& snapshot = half.snapshot;
    const std::optional<symbols::FileNumber> own = snapshot.FindFile(half.path);
    if (!own)
        return shared;
    size_t count = 0;
    for (const symbols::Symbol& symbol : snapshot.OfFile(*own).found) {
        if (++count > kMostSymbols)
            break;
        for (const symbols::Symbol& other : snapshot.ByName(symbol.name, {kMostNamesakes, &half.cancel}).found) {
            const symbols::File file = snapshot.FileOf(other.file);
            const bool isOtherHalf = other.isDefinition != symbol.isDefinition && other.scope == symbol.scope;
            if (isOtherHalf && !file.isSystem && resolve::IsHeaderPath(file.path) != resolve::IsHeaderPath(half.path))
                ++shared[std::string(file.path)];
        }
    }
    return shared;
}

std::optional<std::string> BesideIt(const OneHalf& half)
{
    const std::string directory(resolve::DirectoryOf(half.path));
    for (const std::string& leaf : LeavesOfOther(half.path)) {
        std::string path = directory.empty() && !half.path.starts_with('/') ? leaf : directory + "/" + leaf;
        if (half.exists(path))
            return path;
    }
    return std::nullopt;
}

std::optional<std::string> Elsewhere(const OneHalf& half, const std::map<std::string, size_t>& shared)
{
    std::vector<std::string> paths;
    for (const std::string& leaf : LeavesOfOther(half.path))
        for (const symbols::FileNumber file : half.snapshot.FilesWithLeaf(leaf))
            if (const symbols::File other = half.snapshot.FileOf(file); !other.isSystem)
                paths.emplace_back(other.path);
    const auto rank = [&](const std::string& path) {
        const auto count = shared.find(path);
        return std::tuple(resolve::CommonDirectories(path, half.path), count == shared.end() ? 0 : count->second);
    };
    const auto best = std::max_element(paths.begin(), paths.end(), [&](const std::string& a, const std::string& b) {
        return rank(a) == rank(b) ? a > b : rank(a) < rank(b);
    });
    return best == paths.end() ? std::nullopt : std::optional(*best);
}

} // namespace

std::optional<std::string> OtherHalfOf(const OneHalf& half)
{
    if (std::optional<std::string> beside = BesideIt(half))
        return beside;
    const std::map<std::string, size_t> shared = SharedSymbols(half);
    if (std::optional<std::string> elsewhere = Elsewhere(half, shared))
        return elsewhere;
    const auto most = std::max_element(shared.begin(), shared.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    return most == shared.end() ? std::nullopt : std::optional(most->first);
}

} // namespace wren
