// One state of an index: what it held at a moment, with the texts that are open now.
#pragma once

#include "base/CancelToken.h"
#include "symbols/store/FilesKey.h"
#include "tagging/ParsedSource.h"
#include "tagging/SourceParser.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace symbols {

using tagging::Language;
using tagging::SymbolKind;
using FileNumber = std::uint32_t; // of a file in one snapshot; it means nothing in another

struct Symbol : tagging::Symbol { // texts belong to the snapshot
    FileNumber file = 0;
};

struct File {
    std::string_view path; // relative to the root; absolute for a file of the system
    tagging::FileStamp stamp;
    std::uint64_t contentHash = 0;
    Language language = Language::C;
    bool isIncomplete = false; // ctags has crashed on it or taken too long, so it has no symbols
    bool isSystem = false;
    bool isOpen = false; // the snapshot holds an open text in place of the file
    size_t symbols = 0;  // how many it has
};

struct Include { // one directive
    std::string_view name;
    FileNumber file = 0; // that contains it
    unsigned line = 0;
    bool isAngled = false;
};

// What a query may cost. A query that is cancelled returns what it has, with 'more' set.
struct Limits {
    size_t results = 1000;
    const base::CancelToken* cancel = nullptr; // checked at least every two thousand steps
    bool withSystem = true;                    // Fuzzy() only: symbols of the system's headers count
};

struct Symbols {
    std::vector<Symbol> found;
    bool more = false; // there are others beyond the limit
};

struct FuzzyMatch {
    Symbol symbol;
    int score = 0;                   // higher is better; only for comparing matches of one query
    std::vector<unsigned> positions; // of the pattern's letters in the name, bytes from 0
};

struct FuzzyMatches {
    std::vector<FuzzyMatch> found; // best first
    bool more = false;
};

// Immutable; any thread, any number at once. Keeps its files open, so it stays valid after later updates. A damaged
// file shows as IsDamaged(); what is damaged is left out of answers.
class Snapshot {
public:
    virtual ~Snapshot() = default;

    // Symbols in the order of path and line, those of the system after those of the project. So are all answers below,
    // and a limited answer has the first ones.
    virtual Symbols ByName(std::string_view name, Limits limits) const = 0;
    // Ignores case unless the prefix contains a capital. Ordered by name first, with the same regard to case.
    virtual Symbols ByPrefix(std::string_view prefix, Limits limits) const = 0;
    // "name", "Outer::na" (scope contains those letters), "path/na" (path does).
    virtual FuzzyMatches Fuzzy(std::string_view pattern, Limits limits) const = 0;
    // Direct members: symbols whose scope is exactly this. "" finds nothing.
    virtual Symbols InScope(std::string_view scope, Limits limits) const = 0;
    // Classes and others that name this class (its last part) among their bases.
    virtual Symbols DerivedFrom(std::string_view baseName, Limits limits) const = 0;

    virtual std::optional<FileNumber> FindFile(std::string_view path) const = 0;
    virtual File FileOf(FileNumber file) const = 0;
    virtual Symbols OfFile(FileNumber file) const = 0; // by line, all of them
    virtual std::vector<Include> IncludesOf(FileNumber file) const = 0;
    virtual std::vector<FileNumber> FilesWithLeaf(std::string_view leaf) const = 0; // "a.h" finds "x/a.h"
    // Directives whose name ends in this leaf: "#include <x/a.h>" for "a.h".
    virtual std::vector<Include> IncludesOfLeaf(std::string_view leaf, Limits limits) const = 0;
    virtual std::vector<FileNumber> FilesMentioning(std::string_view name, Limits limits) const = 0;
    // Stops when the function returns false.
    virtual void ForEachFile(const std::function<bool(FileNumber, const File&)>& each) const = 0;
    // Those of the project's own files, in no order; faster than ForEachFile().
    virtual void ForEachOwnPath(const std::function<void(std::string_view path)>& each) const
    {
        ForEachFile([&](FileNumber, const File& file) {
            if (!file.isSystem)
                each(file.path);
            return true;
        });
    }

    // The text of an open file; nullopt when the file itself counts.
    virtual std::optional<std::string_view> OpenText(FileNumber file) const = 0;

    struct Size {
        std::uint64_t files = 0;
        std::uint64_t symbols = 0;
        std::uint64_t bytes = 0; // on the disk
    };
    virtual Size Totals() const = 0;
    virtual bool IsDamaged() const = 0;

    virtual FilesKey Files() const // unlike any other's, unless a class knows better
    {
        FilesKey key;
        key.AddPart(identity, 0);
        return key;
    }

private:
    const std::shared_ptr<const void> identity = std::make_shared<char>();
};

using SnapshotPointer = std::shared_ptr<const Snapshot>;

} // namespace symbols
