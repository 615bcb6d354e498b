#include "resolve/IncludedFiles.h"

#include <algorithm>
#include <set>

namespace resolve {

namespace {

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

// One part at the front of the path, which is removed with its slash.
std::string_view TakePart(std::string_view& path)
{
    const std::string_view part = path.substr(0, path.find('/'));
    path.remove_prefix(std::min(path.size(), part.size() + 1));
    return part;
}

bool Take(std::string_view& path, std::string_view front)
{
    const bool has = path.starts_with(front);
    path.remove_prefix(has ? front.size() : 0);
    return has;
}

// Whether compilers look there without being told: "/usr/include", "/usr/include/x86_64-linux-gnu/c++/12" and so on.
bool IsSearchedByCompilers(std::string_view directory)
{
    if (directory == "/usr/include" || directory == "/usr/local/include")
        return true;
    if (Take(directory, "/usr/lib/gcc/")) {
        TakePart(directory); // machine
        TakePart(directory); // version
        return directory == "include";
    }
    if (!Take(directory, "/usr/include/"))
        return false;
    if (directory.substr(0, directory.find('/')).find("-linux-") != std::string_view::npos) {
        TakePart(directory);
        if (directory.empty())
            return true;
    }
    return Take(directory, "c++/") && !directory.empty() && directory.find('/') == std::string_view::npos;
}

bool IsOfSystem(std::string_view path)
{
    return path.starts_with("/usr/");
}

// Whether compilers find it under that name without being told where.
bool IsFoundAs(std::string_view name, std::string_view path)
{
    return path.size() > name.size() && IsSearchedByCompilers(path.substr(0, path.size() - name.size() - 1));
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
        bool isSearched;  // where compilers find it by its name
        bool isOtherSide; // the project's for a header of the system, and the reverse
        size_t tail;
        size_t common;
        size_t depth;
    };
    std::vector<Ranked> ranked;
    for (const Found& each : WithLeaf(FileLeaf(name)))
        ranked.push_back({each, each.path == beside, EndsInPath(each.path, name),
                          EndsInPath(each.path, name) && IsFoundAs(name, each.path),
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
        if (a.isSearched != b.isSearched)
            return a.isSearched;
        if (a.tail != b.tail)
            return a.tail > b.tail;
        if (include.isAngled && a.found.isSystem && a.depth != b.depth)
            return a.depth < b.depth;
        if (a.common != b.common)
            return a.common > b.common;
        return a.depth < b.depth;
    });
    const bool isSearched = std::ranges::any_of(ranked, &Ranked::isSearched);
    std::vector<symbols::FileNumber> result;
    for (const Ranked& each : ranked)
        if ((each.isWhole || each.isBeside || !ranked.front().isWhole) &&
            (!isSearched || each.isSearched || each.isBeside || !IsOfSystem(each.found.path)))
            result.push_back(each.found.file);
    return result;
}

} // namespace resolve
