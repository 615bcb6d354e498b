// What the commands about symbols have in common: their options, and the indexes that answer them.
#pragma once

#include "base/Result.h"
#include "tagging/Settings.h"
#include "wren/cli/symbols/CurrentIndex.h"
#include "wren/core/Interruption.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace wren {

struct SymbolWords {
    std::string directory; // whose index answers; "" for the one of the place, or of the current directory
    size_t limit = 0;
    bool json = false;
    IndexChoice index;
};

// Adds these options to a command; 'words' outlives the parsing and has the defaults.
void AddTreeOptions(CLI::App& command, SymbolWords& words); // --in and --fresh
void AddNoSystemOption(CLI::App& command, SymbolWords& words);
void AddAnswerOptions(CLI::App& command, SymbolWords& words); // --json and --limit

// The indexes that a run of the program needs, by root. Used by one thread; one in a process, made before other
// threads.
class CurrentIndexes {
public:
    explicit CurrentIndexes(const SymbolWords& words) : words(words) {}

    // The index for a source file, an absolute path; prepared. Warns once for each index that may be stale.
    base::Result<CurrentIndex*> ForFile(const std::string& path);
    base::Result<CurrentIndex*> ForDirectory(); // of the option, or the current one

private:
    base::Result<CurrentIndex*> ForRoot(const base::Result<std::string>& root);

    const SymbolWords& words;
    Interruption interruption;
    std::optional<tagging::Settings> settings;
    std::map<std::string, std::unique_ptr<CurrentIndex>> indexes;
};

} // namespace wren
