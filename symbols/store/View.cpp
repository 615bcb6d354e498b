#include "symbols/store/View.h"

#include "symbols/store/DecodedFile.h"
#include "symbols/store/Names.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace symbols {

const tagging::FileStamp* FileChanges::Touched(FileInSegment file) const
{
    const auto found =
        std::ranges::lower_bound(touched, file, {}, &std::pair<FileInSegment, tagging::FileStamp>::first);
    return found != touched.end() && found->first == file ? &found->second : nullptr;
}

bool Part::IsLive(FileInSegment file) const
{
    return !(changes != nullptr && changes->IsDead(file)) && !std::ranges::binary_search(hidden, file);
}

SystemPaths::SystemPaths(std::string root, std::shared_ptr<const Segment> segment)
    : prefix(std::move(root)), segment(std::move(segment))
{
    if (!prefix.ends_with('/'))
        prefix += '/';
}

std::string_view SystemPaths::Of(FileInSegment file) const
{
    std::call_once(once, [this] {
        for (FileInSegment i = 0; i < segment->FileCount(); i++)
            paths.push_back(prefix + std::string(segment->PathOf(i).value_or("")));
    });
    return file < paths.size() ? std::string_view(paths[file]) : std::string_view();
}

View::View(std::vector<Part> all, std::uint64_t otherBytes) : parts(std::move(all)), otherBytes(otherBytes)
{
    FileNumber first = 0;
    for (Part& part : parts) {
        part.first = first;
        first += part.segment->FileCount();
    }
}

std::shared_ptr<const View> View::Of(const State& state)
{
    std::vector<Part> parts;
    for (const State::Member& member : state.members)
        parts.push_back({.segment = member.segment, .changes = member.changes});
    return std::make_shared<View>(std::move(parts), state.otherBytes);
}

State View::StateOfIndex() const
{
    State state;
    for (const Part& part : parts)
        state.members.push_back({part.segment, part.changes});
    state.otherBytes = otherBytes;
    return state;
}

std::vector<std::shared_ptr<const SystemPaths>> View::PathsUnder(const std::string& root) const
{
    const std::lock_guard guard(lock);
    const std::string prefix = root.ends_with('/') ? root : root + '/';
    if (systemPaths.size() != parts.size() || (!parts.empty() && systemPaths.front()->Prefix() != prefix)) {
        systemPaths.clear();
        for (const Part& part : parts)
            systemPaths.push_back(std::make_shared<SystemPaths>(root, part.segment));
    }
    return systemPaths;
}

const Part* View::PartOf(FileNumber file) const
{
    const auto after = std::ranges::upper_bound(parts, file, {}, &Part::first);
    if (after == parts.begin())
        return nullptr;
    const Part* const part = &*std::prev(after);
    return file - part->first < part->segment->FileCount() ? part : nullptr;
}

std::string_view View::PathOf(const Part& part, FileInSegment file) const
{
    return part.system != nullptr ? part.system->Of(file) : part.segment->PathOf(file).value_or("");
}

bool View::Gather(const Part& part, std::uint32_t key, KeyList list, size_t count, const base::CancelToken* cancel,
                  Hits* hits) const
{
    const bool areFiles = list == KeyList::MentioningFiles || list == KeyList::FilesWithLeaf;
    const size_t enough = count < SIZE_MAX - hits->size() ? hits->size() + count : SIZE_MAX;
    RisingNumbers values = part.segment->List(key, list);
    std::uint32_t end = 0; // of the values in 'file'
    FileInSegment file = 0;
    size_t steps = 0;
    for (std::uint32_t value = 0; hits->size() < enough && values.Next(&value);) {
        if (++steps % kStepsBetweenChecks == 0 && cancel != nullptr && cancel->IsCancelled())
            return false;
        if (areFiles)
            file = value;
        else if (value >= end) {
            file = list == KeyList::IncludesOfLeaf ? part.segment->FileOfInclude(value, file)
                                                   : part.segment->FileOfSymbol(value, file);
            const auto next = part.segment->File(file + 1);
            end = !next ? 0 : list == KeyList::IncludesOfLeaf ? next->includes : next->symbols;
        }
        if (file < part.segment->FileCount() && (areFiles ? FileCounts(part, file) : part.IsLive(file)))
            hits->push_back({&part, file, value, {}});
    }
    return true;
}

std::string_view View::OrderingPath(const Hit& hit)
{
    const std::string_view path = hit.part->segment->PathOf(hit.file).value_or("");
    return path.substr(std::min(hit.part->prefix, path.size()));
}

// The parts' own orders agree with it, so hits of a single part are in order already.
void View::PutInOrder(Hits* hits, size_t from) const
{
    const auto begin = hits->begin() + static_cast<std::ptrdiff_t>(from);
    if (std::all_of(begin, hits->end(), [&](const Hit& hit) { return hit.part == begin->part; }))
        return;
    for (auto hit = begin; hit != hits->end(); hit++)
        hit->path =
            hit != begin && hit[-1].part == hit->part && hit[-1].file == hit->file ? hit[-1].path : OrderingPath(*hit);
    std::sort(begin, hits->end(), [](const Hit& a, const Hit& b) {
        return std::tuple(a.part->isSystem, a.path, a.value) < std::tuple(b.part->isSystem, b.path, b.value);
    });
}

View::Hits View::AllHits(std::string_view keyText, KeyList list, Limits limits, bool* cancelled) const
{
    Hits hits;
    const size_t count = limits.results < SIZE_MAX ? limits.results + 1 : limits.results;
    for (const Part& part : parts) {
        const std::optional<std::uint32_t> key = part.segment->FindKey(keyText);
        if (key && !Gather(part, *key, list, count, limits.cancel, &hits)) {
            *cancelled = true;
            break;
        }
    }
    PutInOrder(&hits, 0);
    return hits;
}

bool View::Fill(const Part& part, FileInSegment file, std::uint32_t place, Symbol* symbol) const
{
    const auto bytes = part.segment->BytesFrom(Section::Symbols, place, kLongestSymbol);
    VarintReader reader(bytes.value_or(""));
    symbol->file = part.first + file;
    return bytes && DecodeSymbol(*part.segment, reader, symbol) && !IsKnownBesidesTags(part, symbol);
}

// A symbol from a tags file, when something more current has one of that name in the file. The tag may be older than
// the file, so their lines may differ. A symbol that only the tag has gets the number of that file.
bool View::IsKnownBesidesTags(const Part& part, Symbol* symbol) const
{
    const std::optional<Place> current =
        part.isFromTags ? PlaceOf(PathOf(part, symbol->file - part.first), false) : std::nullopt;
    if (!current)
        return false;
    symbol->file = current->part->first + current->file;
    const std::optional<std::uint32_t> key = current->part->segment->FindKey(symbol->name);
    Hits hits;
    if (key)
        Gather(*current->part, *key, KeyList::Symbols, SIZE_MAX, nullptr, &hits);
    return std::ranges::any_of(hits, [&](const Hit& hit) { return hit.file == current->file; });
}

bool View::FileCounts(const Part& part, FileInSegment file) const
{
    return part.IsLive(file) && !(part.isFromTags && PlaceOf(PathOf(part, file), false));
}

// The symbols of a frequent name are spread over the whole segment: while one is read, the memory of others comes in.
void View::AppendSymbols(std::span<const Hit> hits, std::vector<Symbol>* symbols) const
{
    std::array<SymbolRecord, kDecodedAtOnce> records;
    std::array<bool, kDecodedAtOnce> areGood = {};
    for (const Hit& hit : hits)
        hit.part->segment->Expect(Section::Symbols, hit.value);
    for (size_t i = 0; i < hits.size(); i++) {
        const Segment& segment = *hits[i].part->segment;
        const auto bytes = segment.BytesFrom(Section::Symbols, hits[i].value, kLongestSymbol);
        VarintReader reader(bytes.value_or(""));
        areGood[i] = bytes && ReadSymbol(reader, &records[i]);
        if (!areGood[i])
            segment.SetDamaged();
        for (size_t text = 0; areGood[i] && text < SymbolRecord::kTexts; text++)
            segment.ExpectText(records[i].texts[text]);
    }
    for (size_t i = 0; i < hits.size(); i++) {
        Symbol symbol;
        symbol.file = hits[i].part->first + hits[i].file;
        if (areGood[i] && FillSymbol(*hits[i].part->segment, records[i], &symbol) &&
            !IsKnownBesidesTags(*hits[i].part, &symbol))
            symbols->push_back(symbol);
    }
}

Symbols View::SymbolsOf(const Hits& hits, Limits limits, bool cancelled) const
{
    Symbols symbols;
    symbols.more = cancelled || hits.size() > limits.results;
    const std::span<const Hit> wanted = std::span(hits).first(std::min(hits.size(), limits.results));
    symbols.found.reserve(wanted.size());
    static_assert(kStepsBetweenChecks % kDecodedAtOnce == 0);
    for (size_t i = 0; i < wanted.size(); i += kDecodedAtOnce) {
        if (i > 0 && i % kStepsBetweenChecks == 0 && limits.cancel != nullptr && limits.cancel->IsCancelled()) {
            symbols.more = true;
            break;
        }
        AppendSymbols(wanted.subspan(i, std::min(kDecodedAtOnce, wanted.size() - i)), &symbols.found);
    }
    return symbols;
}

Symbols View::ByKey(std::string_view key, KeyList list, Limits limits) const
{
    bool cancelled = false;
    const Hits hits = AllHits(key, list, limits, &cancelled);
    return SymbolsOf(hits, limits, cancelled);
}

Symbols View::ByName(std::string_view name, Limits limits) const
{
    return ByKey(name, KeyList::Symbols, limits);
}

Symbols View::InScope(std::string_view scope, Limits limits) const
{
    return ByKey(scope, KeyList::Members, limits);
}

Symbols View::DerivedFrom(std::string_view baseName, Limits limits) const
{
    return ByKey(LastPart(baseName), KeyList::Derived, limits);
}

std::optional<FileNumber> View::FindFile(std::string_view path) const
{
    for (const bool inTags : {false, true})
        if (const std::optional<Place> found = PlaceOf(path, inTags))
            return found->part->first + found->file;
    return std::nullopt;
}

std::optional<View::Place> View::PlaceOf(std::string_view path, bool inTags) const
{
    for (const Part& part : parts) {
        std::string_view inPart = path;
        if (part.isFromTags != inTags)
            continue;
        if (part.system != nullptr && !path.starts_with(part.system->Prefix()))
            continue;
        if (part.system != nullptr)
            inPart.remove_prefix(part.system->Prefix().size());
        const std::optional<FileInSegment> file = part.segment->FindFile(inPart);
        if (file && part.IsLive(*file))
            return Place{&part, *file};
    }
    return std::nullopt;
}

File View::FileOf(FileNumber number) const
{
    File file;
    const Part* const part = PartOf(number);
    const std::optional<FileRecord> record = part == nullptr ? std::nullopt : part->segment->File(number - part->first);
    if (!record)
        return file;
    const FileInSegment inPart = number - part->first;
    file.path = PathOf(*part, inPart);
    file.stamp = {record->size, record->modified, record->inode};
    if (part->changes != nullptr && part->changes->Touched(inPart) != nullptr)
        file.stamp = *part->changes->Touched(inPart);
    file.contentHash = record->contentHash;
    file.language = static_cast<Language>(record->language);
    file.isIncomplete = record->isIncomplete != 0;
    file.symbols = record->symbolCount;
    file.isSystem = part->isSystem;
    file.isOpen = part->open != nullptr;
    return file;
}

Symbols View::OfFile(FileNumber number) const
{
    Symbols symbols;
    const Part* const part = PartOf(number);
    const auto list = part == nullptr ? std::nullopt : part->segment->ListOf(number - part->first, Section::Symbols);
    VarintReader reader(list ? list->bytes : "");
    while (!reader.AtEnd() && !reader.Failed()) {
        Symbol symbol;
        symbol.file = number;
        if (DecodeSymbol(*part->segment, reader, &symbol))
            symbols.found.push_back(symbol);
    }
    return symbols;
}

std::vector<Include> View::IncludesOf(FileNumber number) const
{
    std::vector<Include> includes;
    const Part* const part = PartOf(number);
    const auto list = part == nullptr ? std::nullopt : part->segment->ListOf(number - part->first, Section::Includes);
    VarintReader reader(list ? list->bytes : "");
    while (!reader.AtEnd() && !reader.Failed())
        if (tagging::Include include; DecodeInclude(*part->segment, reader, &include))
            includes.push_back({include.name, number, include.line, include.isAngled});
    return includes;
}

std::vector<FileNumber> View::FilesWithLeaf(std::string_view leaf) const
{
    bool cancelled = false;
    std::vector<FileNumber> files;
    for (const Hit& hit : AllHits(leaf, KeyList::FilesWithLeaf, {SIZE_MAX, nullptr}, &cancelled))
        files.push_back(hit.part->first + hit.file);
    return files;
}

std::vector<FileNumber> View::FilesMentioning(std::string_view name, Limits limits) const
{
    bool cancelled = false;
    Hits hits = AllHits(name, KeyList::MentioningFiles, limits, &cancelled);
    hits.resize(std::min(hits.size(), limits.results));
    std::vector<FileNumber> files;
    for (const Hit& hit : hits)
        files.push_back(hit.part->first + hit.file);
    return files;
}

std::vector<Include> View::IncludesOfLeaf(std::string_view leaf, Limits limits) const
{
    constexpr size_t kLongestInclude = 16;
    bool cancelled = false;
    Hits hits = AllHits(leaf, KeyList::IncludesOfLeaf, limits, &cancelled);
    hits.resize(std::min(hits.size(), limits.results));
    std::vector<Include> includes;
    for (const Hit& hit : hits) {
        const auto bytes = hit.part->segment->BytesFrom(Section::Includes, hit.value, kLongestInclude);
        VarintReader reader(bytes.value_or(""));
        if (tagging::Include include; bytes && DecodeInclude(*hit.part->segment, reader, &include))
            includes.push_back({include.name, hit.part->first + hit.file, include.line, include.isAngled});
    }
    return includes;
}

void View::ForEachFile(const std::function<bool(FileNumber, const symbols::File&)>& each) const
{
    Hits hits;
    for (const Part& part : parts)
        for (FileInSegment file = 0; file < part.segment->FileCount(); file++)
            if (FileCounts(part, file))
                hits.push_back({&part, file, 0, {}});
    PutInOrder(&hits, 0);
    for (const Hit& hit : hits) {
        const FileNumber number = hit.part->first + hit.file;
        const symbols::File file = FileOf(number);
        if (!file.path.empty() && !each(number, file))
            return;
    }
}

void View::ForEachOwnPath(const std::function<void(std::string_view path)>& each) const
{
    for (const Part& part : parts)
        for (FileInSegment file = 0; !part.isSystem && file < part.segment->FileCount(); file++)
            if (const std::string_view path = PathOf(part, file); !path.empty() && FileCounts(part, file))
                each(path);
}

std::optional<std::string_view> View::OpenText(FileNumber file) const
{
    const Part* const part = PartOf(file);
    if (part == nullptr || part->open == nullptr)
        return std::nullopt;
    return part->open->Text();
}

Snapshot::Size View::Totals() const
{
    Size size;
    size.bytes = otherBytes;
    for (const Part& part : parts) {
        size.files += part.segment->FileCount() - part.hidden.size();
        size.symbols += part.segment->SymbolCount();
        size.bytes += part.open == nullptr ? part.segment->Size() : 0;
        for (const FileInSegment file : part.hidden)
            if (const std::optional<FileRecord> record = part.segment->File(file))
                size.symbols -= record->symbolCount;
        if (part.changes != nullptr) {
            size.files -= part.changes->deadFiles;
            size.symbols -= part.changes->deadSymbols;
        }
    }
    return size;
}

bool View::IsDamaged() const
{
    return std::ranges::any_of(parts, [](const Part& part) { return part.segment->IsDamaged(); });
}

FilesKey View::Files() const
{
    FilesKey key;
    for (const Part& part : parts) {
        if (part.open != nullptr) {
            key.AddOpenText(part.open->Path(), part.open);
            continue;
        }
        key.AddPart(part.segment, part.first);
        key.AddPart(part.changes, part.first);
    }
    return key;
}

} // namespace symbols
