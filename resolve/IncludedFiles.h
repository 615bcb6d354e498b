// Which files #includes name, without include paths; and what paths say.
#pragma once

#include "symbols/store/Snapshot.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace resolve {

// Which file an #include means. There are no include paths: the includer's own directory, then the path that ends in
// the whole name and is nearest to the includer, then one that ends in the last part.
class IncludedFiles {
public:
    explicit IncludedFiles(const symbols::Snapshot& snapshot) : snapshot(snapshot) {}

    // Best first; those that only share the last part of the name are left out when others fit better.
    std::vector<symbols::FileNumber> Find(std::string_view includer, const symbols::Include& include);

private:
    struct Found {
        symbols::FileNumber file = 0;
        std::string_view path;
        bool isSystem = false;
    };
    const std::vector<Found>& WithLeaf(std::string_view leaf);

    const symbols::Snapshot& snapshot;
    std::map<std::string, std::vector<Found>, std::less<>> byLeaf;
};

// Of paths.
std::string_view FileLeaf(std::string_view path);
std::string_view DirectoryOf(std::string_view path);
bool IsHeaderPath(std::string_view path);
size_t CommonDirectories(std::string_view a, std::string_view b);

} // namespace resolve
