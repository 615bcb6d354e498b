// Questions about what files contain.
#pragma once

#include "wren/desktop/symbols/FoundPlace.h"
#include "wren/desktop/symbols/SymbolEngine.h"
#include "wren/search/FilesSearch.h"
#include "wren/search/Replacement.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace wren {

struct FilesAsked {
    TextQuery text;
    std::vector<std::string> globs;
    std::string folder; // "" for the project; else absolute, or relative to it
    std::string path;   // of the text whose project it is; "" for none: the directory that the program runs in
    OpenTexts open;
    std::optional<std::string> replacement; // of each match
};

struct FilesAnswer {
    bool more = false;
    std::string problem; // for people: why nothing was found, or what was left out; "" for none
};

// Blocks; for a question's thread. 'part' is called on any thread, one call at a time.
FilesAnswer FindInFiles(const FilesAsked& asked, const Question& question,
                        const std::function<void(std::vector<FoundPlace> part)>& part);

// The same for the replacements, each file at once.
FilesAnswer ReplacementsInFiles(const FilesAsked& asked, const Question& question,
                                const std::function<void(FileReplacements file)>& part);

} // namespace wren
