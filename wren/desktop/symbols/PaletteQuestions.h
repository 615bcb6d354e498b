// What the palette asks while the user types.
#pragma once

#include "symbols/store/Format.h"
#include "symbols/store/Snapshot.h"
#include "wren/desktop/symbols/PaletteItem.h"
#include "wren/desktop/symbols/PlaceQuestions.h"
#include "wren/desktop/symbols/SymbolEngine.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wren {

struct PaletteAnswer {
    std::vector<PaletteItem> items; // best first
    bool more = false;
};

// Of the project of 'path', an absolute one, and of the system's headers. Blocks; for a question's thread.
PaletteAnswer SymbolsLike(const std::string& letters, const std::string& path, const Question& question);

// The files of a project. "dir/na" looks at the whole path, "na" at the name first.
class FileNames {
public:
    // 'recent' are absolute paths, the last one first: they come first among equals, and alone without letters. The
    // files beside 'path' come next. Blocks; for a question's thread, one at a time.
    PaletteAnswer Like(const std::string& letters, const std::string& path, const std::vector<std::string>& recent,
                       const Question& question);

private:
    struct Name {
        std::string path; // as in the index
        size_t leaf = 0;  // where its last part begins
        symbols::NameTraits ofPath, ofLeaf;
    };
    static std::string_view DirectoryOf(const Name& name) { return std::string_view(name.path).substr(0, name.leaf); }
    void Read(const symbols::SnapshotPointer& snapshot);

    std::optional<symbols::FilesKey> known; // whose names these are
    std::vector<Name> names;
};

// Leaves what matches the letters, best first.
void Narrow(std::vector<PaletteItem>& items, const std::string& letters);

// In the order of the text when there are no letters. Blocks; for a question's thread.
PaletteAnswer SymbolsOfText(const std::string& letters, const AskedText& text, const Question& question);

} // namespace wren
