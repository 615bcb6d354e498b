#include "wren/lsp/features/SwitchSourceHeader.h"

#include "resolve/Distances.h"
#include "wren/lsp/session/Subject.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>

namespace wren::lsp {

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

std::map<std::string, size_t> SharedSymbols(const Subject& subject)
{
    std::map<std::string, size_t> shared; // by the file's path
    const symbols::Snapshot& snapshot = subject.Snapshot();
    const std::optional<symbols::FileNumber> own = snapshot.FindFile(subject.Path());
    if (!own)
        return shared;
    size_t count = 0;
    for (const symbols::Symbol& symbol : snapshot.OfFile(*own).found) {
        if (++count > kMostSymbols)
            break;
        for (const symbols::Symbol& other : snapshot.ByName(symbol.name, subject.LimitsOf(kMostNamesakes)).found) {
            const symbols::File file = snapshot.FileOf(other.file);
            const bool isOtherHalf = other.isDefinition != symbol.isDefinition && other.scope == symbol.scope;
            if (isOtherHalf && !file.isSystem &&
                resolve::IsHeaderPath(file.path) != resolve::IsHeaderPath(subject.Path()))
                ++shared[std::string(file.path)];
        }
    }
    return shared;
}

std::optional<std::string> BesideIt(const Subject& subject)
{
    const std::string directory(resolve::DirectoryOf(subject.Path()));
    for (const std::string& leaf : LeavesOfOther(subject.Path())) {
        std::string path = directory.empty() && !subject.Path().starts_with('/') ? leaf : directory + "/" + leaf;
        if (subject.TextOf(path) != nullptr)
            return path;
    }
    return std::nullopt;
}

std::optional<std::string> Elsewhere(const Subject& subject, const std::map<std::string, size_t>& shared)
{
    std::vector<std::string> paths;
    for (const std::string& leaf : LeavesOfOther(subject.Path()))
        for (const symbols::FileNumber file : subject.Snapshot().FilesWithLeaf(leaf))
            if (const symbols::File other = subject.Snapshot().FileOf(file); !other.isSystem)
                paths.emplace_back(other.path);
    const auto rank = [&](const std::string& path) {
        const auto count = shared.find(path);
        return std::tuple(resolve::CommonDirectories(path, subject.Path()), count == shared.end() ? 0 : count->second);
    };
    const auto best = std::max_element(paths.begin(), paths.end(), [&](const std::string& a, const std::string& b) {
        return rank(a) == rank(b) ? a > b : rank(a) < rank(b);
    });
    return best == paths.end() ? std::nullopt : std::optional(*best);
}

std::optional<std::string> OtherOf(const Subject& subject)
{
    if (std::optional<std::string> beside = BesideIt(subject))
        return beside;
    const std::map<std::string, size_t> shared = SharedSymbols(subject);
    if (std::optional<std::string> elsewhere = Elsewhere(subject, shared))
        return elsewhere;
    const auto most = std::max_element(shared.begin(), shared.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    return most == shared.end() ? std::nullopt : std::optional(most->first);
}

} // namespace

void from_json(const Json& json, TextDocumentIdentifier& params)
{
    params.uri = Member<std::string>(json, "uri");
}

Json SwitchSourceHeader(const TextDocumentIdentifier& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    const std::optional<std::string> other = subject.IsSource() ? OtherOf(subject) : std::nullopt;
    return other ? Json(subject.UriOf(*other)) : Json();
}

} // namespace wren::lsp
