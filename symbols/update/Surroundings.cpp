#include "symbols/update/Surroundings.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <sys/stat.h>
#include <utility>

namespace symbols {

namespace {

constexpr std::string_view kTelling[] = {".git",           ".gitignore",  ".wrenignore",
                                         "CMakeCache.txt", "build.ninja", "meson-info"};

std::string_view LeafOf(std::string_view path)
{
    return path.substr(path.rfind('/') + 1);
}

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names)
{
    return std::ranges::find(names, name) != names.end();
}

} // namespace

bool TellingNames::IsOne(std::string_view leaf)
{
    return std::ranges::find(kTelling, leaf) != std::end(kTelling);
}

void TellingNames::Add(std::string_view leaf)
{
    git = git || leaf == ".git";
    gitignore = gitignore || leaf == ".gitignore";
    wrenignore = wrenignore || leaf == ".wrenignore";
    isBuild = isBuild || IsOneOf(leaf, {"CMakeCache.txt", "build.ninja", "meson-info"});
}

TellingNames TellingNames::Of(const std::string& directory)
{
    TellingNames names;
    for (const std::string_view leaf : kTelling) {
        struct stat status;
        if (::lstat((directory + "/").append(leaf).c_str(), &status) == 0)
            names.Add(leaf);
    }
    return names;
}

void Surroundings::EnterTree(GitTree::Pointer next)
{
    tree = std::move(next);
    gitRules = tree != nullptr ? tree->OuterRules() : nullptr;
    onlyTracked = false;
}

void Surroundings::AddFiles(const std::string& directory, const TellingNames& names)
{
    if (tree != nullptr && names.gitignore)
        gitRules = IgnoreRules::WithFile(gitRules, directory + "/.gitignore", directory);
    if (names.wrenignore)
        wrenRules = IgnoreRules::WithFile(wrenRules, directory + "/.wrenignore", directory);
}

// A directory that the work tree around it ignores is on its own, unless something in it is tracked: it may be a
// project below a home directory that is itself under git.
Surroundings Surroundings::OfTop(const std::string& directory, const TellingNames& names)
{
    Surroundings top;
    top.EnterTree(GitTree::Around(directory));
    if (top.tree == nullptr || top.tree->Top() == directory) {
        top.AddFiles(directory, names);
        return top;
    }
    std::string above = top.tree->Top();
    for (;;) {
        if (const TellingNames there = TellingNames::Of(above); there.gitignore)
            top.gitRules = IgnoreRules::WithFile(top.gitRules, above + "/.gitignore", above);
        if (above == directory)
            break;
        above = directory.substr(0, directory.find('/', above.size() + 1));
        if (!top.onlyTracked && top.gitRules != nullptr && top.gitRules->Ignores(above, true))
            top.onlyTracked = true;
    }
    if (top.onlyTracked && !top.tree->TracksBelow(directory))
        top.EnterTree(nullptr);
    if (names.wrenignore)
        top.wrenRules = IgnoreRules::WithFile(nullptr, directory + "/.wrenignore", directory);
    return top;
}

std::optional<Surroundings> Surroundings::Inside(const std::string& directory, const TellingNames& names) const
{
    Surroundings inner = *this;
    if (names.git)
        if (GitTree::Pointer own = GitTree::At(directory))
            inner.EnterTree(std::move(own));
    if (inner.tree == nullptr && names.isBuild)
        return std::nullopt;
    if (inner.tree != nullptr && inner.tree == tree && !onlyTracked && gitRules != nullptr)
        inner.onlyTracked = gitRules->Ignores(directory, true);
    inner.AddFiles(directory, names);
    return inner;
}

// Tracked files count even if a pattern matches them, as in git.
bool Surroundings::IsHidden(const std::string& path, bool isDirectory) const
{
    if (wrenRules != nullptr && wrenRules->Ignores(path, isDirectory))
        return true;
    if (tree == nullptr || (!onlyTracked && (gitRules == nullptr || !gitRules->Ignores(path, isDirectory))))
        return false;
    return isDirectory ? !tree->TracksBelow(path) : !tree->Tracks(path);
}

bool Surroundings::TakesDirectory(const std::string& path) const
{
    const std::string_view leaf = LeafOf(path);
    if (IsOneOf(leaf, {".git", ".hg", ".svn", ".jj"}) || (tree == nullptr && leaf == "node_modules"))
        return false;
    if (IsOneOf(path, {"/proc", "/sys", "/dev", "/run"})) // without end, and not files
        return false;
    return !IsHidden(path, true);
}

bool Surroundings::TakesFile(const std::string& path) const
{
    return !IsHidden(path, false);
}

} // namespace symbols
