// The directories of a project as a person looks at them.
#pragma once

#include "base/CancelToken.h"
#include "base/Result.h"
#include "symbols/update/Surroundings.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace wren {

struct TreeEntry {
    enum class Kind {
        Directory,
        File, // or a link to one in the same project
        Link  // to a directory, out of the project, or to nothing: it is shown, and not followed
    };

    std::string name;
    Kind kind = Kind::File;

    bool operator==(const TreeEntry&) const = default;
};

// Directories before everything else, then by names without regard to case.
bool StandsBefore(const TreeEntry& left, const TreeEntry& right);

// Reads a directory when it is asked for, never more. Not thread-safe. Paths are relative to the root; "" is the root
// itself.
class ProjectTree {
public:
    explicit ProjectTree(std::string root) : root(std::move(root)) {} // absolute, without links and a trailing "/"

    const std::string& Root() const { return root; }

    // What is there now, in order. 'all': also what the ignore rules of the project leave out. An error when it is no
    // longer a directory, or cannot be read.
    base::Result<std::vector<TreeEntry>> List(const std::string& directory, bool all);

    void Forget(); // the ignore rules: they may have changed

private:
    const symbols::Surroundings* Around(const std::string& directory); // null: nothing in it counts
    bool IsFileWithin(const std::string& link) const;
    std::string Absolute(const std::string& path) const;

    const std::string root;
    std::map<std::string, std::optional<symbols::Surroundings>> around; // by directory
};

// All files of a project that its ignore rules leave, in byte order, or kMostFiles of them; relative to the root, which
// is absolute. 'all': also what those rules leave out, but nothing of git's own: any letters fit its names. Blocks.
inline constexpr size_t kMostFiles = 1'000'000;
base::Result<std::vector<std::string>> FilesBelow(const std::string& root, bool all, const base::CancelToken& cancel);

// At most 'limit' of the files whose names contain the letters, without regard to case; letters with a "/" are looked
// for in the whole paths.
std::vector<std::string> FilesWith(std::string_view letters, const std::vector<std::string>& files, size_t limit,
                                   const base::CancelToken& cancel);

} // namespace wren
