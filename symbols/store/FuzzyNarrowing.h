// Which symbols a fuzzy search is for: those whose scope, or whose file's path, has some letters in their order.
#pragma once

#include "symbols/store/Fuzzy.h"
#include "symbols/store/View.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace symbols {

// Not thread-safe. All that it is given must outlive it.
class FuzzyNarrowing {
public:
    enum class By : std::uint8_t { Nothing, Scope, Path };
    FuzzyNarrowing(By by, std::string_view letters, const base::CancelToken* cancel)
        : by(by), pattern(letters), cancel(cancel)
    {
    }

    void Enter(const Part& part); // what follows is about this part
    bool Includes(FileInSegment file, std::uint32_t symbol) const;

    // The names of all symbols that are included, each once; nullopt when they are too many for that to be the quicker
    // way.
    std::optional<std::vector<TextNumber>> Names() const;

private:
    void FindScopes();
    void FindFiles();
    bool IsCancelled() const { return cancel != nullptr && cancel->IsCancelled(); }
    std::optional<SymbolRecord> Record(std::uint32_t symbol) const;

    By by;
    FuzzyPattern pattern;
    const base::CancelToken* cancel;
    const Part* part = nullptr;
    std::vector<std::uint32_t> scopeKeys; // those that match
    std::vector<TextNumber> scopes;       // their texts, sorted
    std::vector<bool> files;
};

} // namespace symbols
