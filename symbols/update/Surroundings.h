// What decides whether a directory's files count.
#pragma once

#include "symbols/update/GitTree.h"
#include "symbols/update/IgnoreRules.h"

#include <optional>
#include <string>
#include <string_view>

namespace symbols {

// The names in a directory that decide about its files.
struct TellingNames {
    bool git = false;        // ".git"
    bool gitignore = false;  // ".gitignore"
    bool wrenignore = false; // ".wrenignore"
    bool isBuild = false;    // "CMakeCache.txt", "build.ninja" or "meson-info"

    void Add(std::string_view leaf);
    static bool IsOne(std::string_view leaf);
    static TellingNames Of(const std::string& directory);
};

// Of one directory. A small value; any thread.
class Surroundings {
public:
    // Of the top of a walk. Builds and ignored directories count there, since the user has asked for them.
    static Surroundings OfTop(const std::string& directory, const TellingNames& names);

    // Of a directory in this one, for which TakesDirectory() is true; nullopt when its files do not count. Paths are
    // absolute.
    std::optional<Surroundings> Inside(const std::string& directory, const TellingNames& names) const;

    bool TakesDirectory(const std::string& path) const;
    bool TakesFile(const std::string& path) const; // whatever its name

private:
    bool IsHidden(const std::string& path, bool isDirectory) const;
    void EnterTree(GitTree::Pointer tree);
    void AddFiles(const std::string& directory, const TellingNames& names);

    GitTree::Pointer tree;
    IgnoreRules::Pointer gitRules;
    IgnoreRules::Pointer wrenRules;
    bool onlyTracked = false; // in a directory that git ignores
};

} // namespace symbols
