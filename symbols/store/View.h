// A snapshot: segments, and what of them counts.
#pragma once

#include "symbols/store/Segment.h"
#include "symbols/store/Snapshot.h"
#include "symbols/store/Store.h"

#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace symbols {

constexpr size_t kStepsBetweenChecks = 1024; // of a query, between two looks at its cancel token

// What has changed in a segment's files since it was written. Immutable once shared.
struct FileChanges {
    std::vector<bool> dead; // by file: removed, or replaced by a later segment; may be empty
    std::uint64_t deadFiles = 0;
    std::uint64_t deadSymbols = 0;
    std::vector<std::pair<FileInSegment, tagging::FileStamp>> touched; // by file

    bool IsDead(FileInSegment file) const { return file < dead.size() && dead[file]; }
    const tagging::FileStamp* Touched(FileInSegment file) const; // null: as in the segment
};

struct State { // of one index
    struct Member {
        std::shared_ptr<const Segment> segment;
        std::shared_ptr<const FileChanges> changes; // never null
    };
    std::vector<Member> members;
    std::uint64_t otherBytes = 0; // of files other than segments
};

// Absolute paths of a segment's files. Any thread.
class SystemPaths {
public:
    SystemPaths(std::string root, std::shared_ptr<const Segment> segment);
    std::string_view Of(FileInSegment file) const;
    const std::string& Prefix() const { return prefix; }

private:
    std::string prefix; // ends with "/"
    std::shared_ptr<const Segment> segment;
    mutable std::once_flag once; // they are made when the first one is needed: many questions need none
    mutable std::vector<std::string> paths;
};

struct Part {
    std::shared_ptr<const Segment> segment = nullptr;
    std::shared_ptr<const FileChanges> changes = nullptr;
    std::vector<FileInSegment> hidden = {};              // by open texts; sorted
    std::shared_ptr<const SystemPaths> system = nullptr; // the paths in the snapshot; null: as in the segment
    std::shared_ptr<const OpenText> open = nullptr;      // the segment is this text
    bool isSystem = false;
    bool isFromTags = false; // files may be in other parts, too: those count, and their symbols of the same name
    size_t prefix = 0;       // bytes of the paths in the segment that the order of files leaves out
    FileNumber first = 0;    // number of the segment's file 0 in the snapshot

    bool IsLive(FileInSegment file) const;
};

// Each file is live in one part at most, besides those from tags files.
class View : public Snapshot {
public:
    explicit View(std::vector<Part> parts, std::uint64_t otherBytes = 0);
    static std::shared_ptr<const View> Of(const State& state);

    const std::vector<Part>& Parts() const { return parts; }
    State StateOfIndex() const; // only for what Of() returned
    std::uint64_t OtherBytes() const { return otherBytes; }

    Symbols ByName(std::string_view name, Limits limits) const override;
    Symbols ByPrefix(std::string_view prefix, Limits limits) const override;
    FuzzyMatches Fuzzy(std::string_view pattern, Limits limits) const override;
    Symbols InScope(std::string_view scope, Limits limits) const override;
    Symbols DerivedFrom(std::string_view baseName, Limits limits) const override;
    std::optional<FileNumber> FindFile(std::string_view path) const override;
    File FileOf(FileNumber file) const override;
    Symbols OfFile(FileNumber file) const override;
    std::vector<Include> IncludesOf(FileNumber file) const override;
    std::vector<FileNumber> FilesWithLeaf(std::string_view leaf) const override;
    std::vector<Include> IncludesOfLeaf(std::string_view leaf, Limits limits) const override;
    std::vector<FileNumber> FilesMentioning(std::string_view name, Limits limits) const override;
    void ForEachFile(const std::function<bool(FileNumber, const symbols::File&)>& each) const override;
    void ForEachOwnPath(const std::function<void(std::string_view path)>& each) const override;
    std::optional<std::string_view> OpenText(FileNumber file) const override;
    Size Totals() const override;
    bool IsDamaged() const override;
    FilesKey Files() const override;

    // The paths of a system's files; kept, since the same snapshot is combined again and again.
    std::vector<std::shared_ptr<const SystemPaths>> PathsUnder(const std::string& root) const;

private:
    struct Hit { // a value of a list whose file is live
        const Part* part;
        FileInSegment file;
        std::uint32_t value;
        std::string_view path;
    };
    using Hits = std::vector<Hit>;

    const Part* PartOf(FileNumber file) const;
    struct Place {
        const Part* part;
        FileInSegment file;
    };
    std::optional<Place> PlaceOf(std::string_view path, bool inTags) const;
    bool FileCounts(const Part& part, FileInSegment file) const;
    bool IsKnownBesidesTags(const Part& part, Symbol* symbol) const;
    std::string_view PathOf(const Part& part, FileInSegment file) const;
    bool Fill(const Part& part, FileInSegment file, std::uint32_t place, Symbol* symbol) const;
    // Adds at most 'count' hits of the list, the first ones; returns false when cancelled.
    bool Gather(const Part& part, std::uint32_t key, KeyList list, size_t count, const base::CancelToken* cancel,
                Hits* hits) const;
    // Of all parts, in the order of answers: one more than the limit when there are more.
    Hits AllHits(std::string_view keyText, KeyList list, Limits limits, bool* cancelled) const;
    static std::string_view OrderingPath(const Hit& hit);
    void PutInOrder(Hits* hits, size_t from) const;
    static constexpr size_t kDecodedAtOnce = 16;
    void AppendSymbols(std::span<const Hit> hits, std::vector<Symbol>* symbols) const; // of up to kDecodedAtOnce
    Symbols SymbolsOf(const Hits& hits, Limits limits, bool cancelled) const;
    Symbols ByKey(std::string_view key, KeyList list, Limits limits) const;

    class PrefixSearch;
    class FuzzySearch;

    std::vector<Part> parts;
    std::uint64_t otherBytes;
    mutable std::mutex lock; // of the next one
    mutable std::vector<std::shared_ptr<const SystemPaths>> systemPaths;
};

} // namespace symbols
