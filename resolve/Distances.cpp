#include "resolve/Distances.h"

#include <algorithm>
#include <set>

namespace resolve {

namespace {

constexpr size_t kMostFiles = 3000; // a driver of a kernel includes some 1,500
constexpr int kMostSteps = 40;

std::string_view StemOf(std::string_view path)
{
    const std::string_view leaf = FileLeaf(path);
    return leaf.substr(0, leaf.find('.'));
}

// "../x/a.h" in "src/y" is "src/x/a.h".
std::string InDirectory(std::string_view directory, std::string_view name)
{
    while (name.starts_with("./"))
        name.remove_prefix(2);
    while (name.starts_with("../") && !directory.empty()) {
        name.remove_prefix(3);
        directory = DirectoryOf(directory);
    }
    std::string path(directory);
    if (!path.empty() && !path.ends_with('/'))
        path += '/';
    return path += name;
}

std::string_view WithoutDots(std::string_view name)
{
    while (name.starts_with("./") || name.starts_with("../"))
        name.remove_prefix(name[1] == '/' ? 2 : 3);
    return name;
}

bool EndsInPath(std::string_view path, std::string_view name)
{
    return path.ends_with(name) && (path.size() == name.size() || path[path.size() - name.size() - 1] == '/');
}

size_t CommonTail(std::string_view a, std::string_view b)
{
    size_t parts = 0;
    while (!a.empty() && !b.empty() && FileLeaf(a) == FileLeaf(b)) {
        ++parts;
        a = DirectoryOf(a);
        b = DirectoryOf(b);
    }
    return parts;
}

size_t Depth(std::string_view path)
{
    return static_cast<size_t>(std::count(path.begin(), path.end(), '/'));
}

} // namespace

std::string_view FileLeaf(std::string_view path)
{
    const size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view DirectoryOf(std::string_view path)
{
    const size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

bool IsHeaderPath(std::string_view path)
{
    static const std::set<std::string_view> kSources = {"c", "cc", "cp", "cpp", "cxx", "c++", "C", "m", "mm", "M"};
    const std::string_view leaf = FileLeaf(path);
    const size_t dot = leaf.rfind('.');
    return dot == std::string_view::npos || !kSources.contains(leaf.substr(dot + 1));
}

size_t CommonDirectories(std::string_view a, std::string_view b)
{
    a = DirectoryOf(a);
    b = DirectoryOf(b);
    size_t common = 0;
    while (!a.empty() && !b.empty()) {
        const std::string_view left = a.substr(0, a.find('/'));
        const std::string_view right = b.substr(0, b.find('/'));
        if (left != right)
            break;
        ++common;
        a.remove_prefix(std::min(a.size(), left.size() + 1));
        b.remove_prefix(std::min(b.size(), right.size() + 1));
    }
    return common;
}

const std::vector<IncludedFiles::Found>& IncludedFiles::WithLeaf(std::string_view leaf)
{
    const auto known = byLeaf.find(leaf);
    if (known != byLeaf.end())
        return known->second;
    std::vector<Found> found;
    for (const symbols::FileNumber number : snapshot.FilesWithLeaf(leaf)) {
        const symbols::File file = snapshot.FileOf(number);
        found.push_back({number, file.path, file.isSystem});
    }
    return byLeaf.emplace(leaf, std::move(found)).first->second;
}

std::vector<symbols::FileNumber> IncludedFiles::Find(std::string_view includer, const symbols::Include& include)
{
    const std::string_view name = WithoutDots(include.name);
    if (name.empty())
        return {};
    const std::string beside = InDirectory(DirectoryOf(includer), include.name);
    const bool fromSystem = includer.starts_with('/');
    struct Ranked {
        Found found;
        bool isBeside;
        bool isWhole;
        bool isOtherSide; // the project's for a header of the system, and the reverse
        size_t tail;
        size_t common;
        size_t depth;
    };
    std::vector<Ranked> ranked;
    for (const Found& each : WithLeaf(FileLeaf(name)))
        ranked.push_back({each, each.path == beside, EndsInPath(each.path, name),
                          each.isSystem != (fromSystem || include.isAngled), CommonTail(each.path, name),
                          CommonDirectories(each.path, includer), Depth(each.path)});
    std::stable_sort(ranked.begin(), ranked.end(), [&](const Ranked& a, const Ranked& b) {
        if (a.isBeside != b.isBeside)
            return a.isBeside;
        if (a.isWhole != b.isWhole)
            return a.isWhole;
        if (fromSystem && a.isOtherSide != b.isOtherSide)
            return b.isOtherSide;
        if (a.found.isSystem != b.found.isSystem)
            return b.found.isSystem;
        if (a.tail != b.tail)
            return a.tail > b.tail;
        if (include.isAngled && a.found.isSystem && a.depth != b.depth)
            return a.depth < b.depth;
        if (a.common != b.common)
            return a.common > b.common;
        return a.depth < b.depth;
    });
    std::vector<symbols::FileNumber> result;
    for (const Ranked& each : ranked)
        if (each.isWhole || each.isBeside || !ranked.front().isWhole)
            result.push_back(each.found.file);
    return result;
}

Distances::Distances(const symbols::Snapshot& snapshot, std::string_view path, std::vector<symbols::Include> includes)
    : snapshot(snapshot), path(path), includes(std::move(includes)), files(snapshot)
{
}

void Distances::Walk()
{
    walked = true;
    Visit(path, includes, 1);
    for (size_t i = 0; i < order.size() && order.size() < kMostFiles; ++i) {
        const symbols::FileNumber next = order[i];
        const int step = steps[next];
        if (step < kMostSteps)
            Visit(FileOf(next).path, snapshot.IncludesOf(next), step + 1);
    }
}

void Distances::Visit(std::string_view includer, const std::vector<symbols::Include>& from, int step)
{
    for (const symbols::Include& include : from) {
        const std::vector<symbols::FileNumber> found = files.Find(includer, include);
        if (found.empty() || !steps.emplace(found.front(), step).second)
            continue;
        order.push_back(found.front());
        const symbols::File& file = FileOf(found.front());
        if (!file.isSystem)
            stems.emplace(StemOf(file.path), step);
    }
}

const std::vector<symbols::FileNumber>& Distances::Included()
{
    if (!walked)
        Walk();
    return order;
}

const symbols::File& Distances::FileOf(symbols::FileNumber file)
{
    const auto found = known.find(file);
    return found != known.end() ? found->second : known.emplace(file, snapshot.FileOf(file)).first->second;
}

bool Distances::IsHeader(symbols::FileNumber file)
{
    return IsHeaderPath(FileOf(file).path);
}

int Distances::Of(symbols::FileNumber file)
{
    const auto found = measured.find(file);
    if (found != measured.end())
        return found->second;
    if (!walked)
        Walk();
    const auto included = steps.find(file);
    const int distance = included != steps.end() ? 2 * included->second : Measure(FileOf(file));
    return measured.emplace(file, distance).first->second;
}

int Distances::Measure(const symbols::File& file)
{
    if (file.path == path)
        return kOwn;
    if (file.isSystem != path.starts_with('/'))
        return kSystem;
    if (!IsHeaderPath(file.path)) {
        const auto header = stems.find(StemOf(file.path));
        if (header != stems.end())
            return 2 * header->second + 1;
    }
    if (StemOf(file.path) == StemOf(path) && DirectoryOf(file.path) == DirectoryOf(path))
        return 3;
    if (DirectoryOf(file.path) == DirectoryOf(path))
        return kUnrelated;
    const int common = static_cast<int>(CommonDirectories(file.path, path));
    return kUnrelated + std::max(1, 100 - common);
}

} // namespace resolve
