#include "symbols/store/FuzzyNarrowing.h"

#include <algorithm>

namespace symbols {

namespace {

constexpr size_t kManySymbols = 100'000;

} // namespace

void FuzzyNarrowing::Enter(const Part& entered)
{
    part = &entered;
    scopeKeys.clear();
    scopes.clear();
    files.assign(by == By::Path ? part->segment->FileCount() : 0, false);
    if (by == By::Scope)
        FindScopes();
    if (by == By::Path)
        FindFiles();
}

void FuzzyNarrowing::FindScopes()
{
    for (std::uint32_t i = 0; i < part->segment->ScopeCount(); i++) {
        if (i % kStepsBetweenChecks == 0 && IsCancelled())
            return;
        const std::optional<std::uint32_t> key = part->segment->KeyOfScope(i);
        const std::optional<TextNumber> number = key ? part->segment->TextOfKey(*key) : std::nullopt;
        const std::optional<std::string_view> text = number ? part->segment->Text(*number) : std::nullopt;
        if (!text || !pattern.Contains(*text))
            continue;
        scopeKeys.push_back(*key);
        scopes.push_back(*number);
    }
    std::ranges::sort(scopes);
}

void FuzzyNarrowing::FindFiles()
{
    for (FileInSegment file = 0; file < files.size(); file++) {
        if (file % kStepsBetweenChecks == 0 && IsCancelled())
            return;
        const std::string_view path =
            part->system != nullptr ? part->system->Of(file) : part->segment->PathOf(file).value_or("");
        files[file] = part->IsLive(file) && pattern.Contains(path);
    }
}

std::optional<SymbolRecord> FuzzyNarrowing::Record(std::uint32_t symbol) const
{
    const auto bytes = part->segment->BytesFrom(Section::Symbols, symbol, kLongestSymbol);
    VarintReader reader(bytes.value_or(""));
    SymbolRecord record;
    return bytes && ReadSymbol(reader, &record) ? std::optional(record) : std::nullopt;
}

bool FuzzyNarrowing::Includes(FileInSegment file, std::uint32_t symbol) const
{
    if (by == By::Path)
        return files[file];
    if (by == By::Nothing)
        return true;
    const std::optional<SymbolRecord> record = Record(symbol);
    return record && std::ranges::binary_search(scopes, record->texts[SymbolRecord::Scope]);
}

std::optional<std::vector<TextNumber>> FuzzyNarrowing::Names() const
{
    std::vector<TextNumber> names;
    if (by == By::Nothing)
        return std::nullopt;
    for (const std::uint32_t scope : scopeKeys) {
        RisingNumbers members = part->segment->List(scope, KeyList::Members);
        for (std::uint32_t symbol = 0; members.Next(&symbol);)
            if (const std::optional<SymbolRecord> record = Record(symbol))
                names.push_back(record->texts[SymbolRecord::Name]);
        if (names.size() > kManySymbols)
            return std::nullopt;
    }
    for (FileInSegment file = 0; file < files.size(); file++) {
        if (!files[file])
            continue;
        const auto list = part->segment->ListOf(file, Section::Symbols);
        VarintReader reader(list ? list->bytes : "");
        for (SymbolRecord record; !reader.AtEnd() && ReadSymbol(reader, &record);)
            names.push_back(record.texts[SymbolRecord::Name]);
        if (names.size() > kManySymbols)
            return std::nullopt;
    }
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

} // namespace symbols
