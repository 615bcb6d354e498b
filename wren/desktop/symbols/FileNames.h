// Finds files of a project by a few letters.
#pragma once

#include "symbols/store/Format.h"
#include "symbols/store/Fuzzy.h"
#include "symbols/store/Snapshot.h"
#include "wren/desktop/symbols/PaletteQuestions.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

namespace wren {

// "dir/na" looks at the whole path, "na" at the name first. For the threads of questions, one at a time.
class FileNames {
public:
    // 'recent' are absolute paths, the last one first: they come first among equals, and alone without letters. The
    // files beside 'path' come next. Blocks.
    PaletteAnswer Like(const std::string& letters, const std::string& path, const std::vector<std::string>& recent,
                       const Question& question);

    // What an index has now. Its names are examined once, not after each change of a file.
    void Read(const symbols::Snapshot& snapshot);
    size_t Examined() const { return examined; } // names, until now

private:
    struct Traits {
        size_t leaf = 0; // where the path's last part begins
        symbols::NameTraits ofPath, ofLeaf;
    };
    struct PathHash {
        using is_transparent = void;
        size_t operator()(std::string_view path) const { return std::hash<std::string_view>()(path); }
    };
    using Known = std::unordered_map<std::string, Traits, PathHash, std::equal_to<>>;
    using Name = Known::value_type;
    // Only the path matches, how well, age, in another directory than the text, length.
    using Rank = std::tuple<bool, int, size_t, bool, size_t>;
    using Ranked = std::vector<std::pair<Rank, const Name*>>;
    struct Wish;

    static std::string_view DirectoryOf(const Name& name);
    static std::string_view LeafOf(const Name& name);
    static std::optional<Rank> RankOf(const Name& name, const Wish& wish);
    const Name& Examine(std::string_view path);

    std::optional<symbols::FilesKey> files; // whose names these are
    Known known;                            // also some that are gone
    std::vector<const Name*> names;
    size_t examined = 0;
};

} // namespace wren
