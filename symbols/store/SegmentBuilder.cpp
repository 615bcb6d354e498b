#include "symbols/store/SegmentBuilder.h"

#include "symbols/store/KeyLists.h"
#include "symbols/store/NameTraits.h"
#include "symbols/store/Names.h"
#include "symbols/store/SortTexts.h"

#include <algorithm>
#include <future>
#include <numeric>
#include <random>

namespace symbols {

namespace {

template <class T>
void AppendAll(SegmentSink& sink, const std::vector<T>& values)
{
    sink.Append({reinterpret_cast<const char*>(values.data()), values.size() * sizeof(T)});
}

// Whether work on this many texts is worth another thread. When the system has none to give, the work waits until its
// result is needed.
std::launch PolicyFor(size_t count)
{
    constexpr size_t kMany = 50'000;
    return count < kMany ? std::launch::deferred : std::launch::async | std::launch::deferred;
}

std::uint64_t RandomNumber()
{
    std::random_device random;
    return std::uint64_t(random()) << 32 | random();
}

} // namespace

SegmentBuilder::FileNumber SegmentBuilder::Add(std::string_view path, const tagging::FileStamp& stamp,
                                               const tagging::ParsedSource& source)
{
    FileContent file;
    file.record.path = texts.Put(path);
    texts.Put(LeafOf(path));
    file.record.contentHash = source.contentHash;
    file.record.language = static_cast<std::uint8_t>(source.language);
    file.record.isIncomplete = source.isIncomplete;
    AddSymbols(source, &file);
    AddIncludes(source, &file);
    AddMentions(source, &file);
    for (std::string* bytes : {&file.symbols, &file.includes, &file.mentions})
        bytes->shrink_to_fit();
    memory += sizeof(file) + file.symbols.size() * 2 + file.includes.size() * 2 + file.mentions.size() * 5;
    files.push_back(std::move(file));
    live++;
    const auto number = static_cast<FileNumber>(files.size() - 1);
    Touch(number, stamp);
    return number;
}

void SegmentBuilder::Touch(FileNumber file, const tagging::FileStamp& stamp)
{
    files[file].record.size = stamp.size;
    files[file].record.modified = stamp.modified;
    files[file].record.inode = stamp.inode;
}

void SegmentBuilder::Drop(FileNumber file)
{
    live -= files[file].isDropped ? 0 : 1;
    files[file].isDropped = true;
    files[file].symbols = files[file].includes = files[file].mentions = {};
}

void SegmentBuilder::AddSymbols(const tagging::ParsedSource& source, FileContent* file)
{
    std::vector<const tagging::Symbol*> order;
    for (const tagging::Symbol& symbol : source.symbols)
        if (!symbol.name.empty())
            order.push_back(&symbol);
    file->record.symbolCount = static_cast<std::uint32_t>(order.size());
    std::ranges::stable_sort(order, {}, &tagging::Symbol::line);
    numbers.clear();
    newTexts.clear();
    for (const tagging::Symbol* each : order)
        newTexts.insert(newTexts.end(), {each->name, each->scope, each->type, each->signature, each->bases,
                                         each->templateParameters, each->target});
    texts.Put(newTexts, numbers);
    auto number = numbers.begin();
    for (const tagging::Symbol* symbol : order) {
        SymbolRecord record = {{}, *symbol};
        for (TextNumber& text : record.texts)
            text = *number++;
        PutSymbol(file->symbols, record);
        for (const std::string_view base : BaseNames(symbol->bases))
            texts.Put(base);
    }
}

void SegmentBuilder::AddIncludes(const tagging::ParsedSource& source, FileContent* file)
{
    std::vector<const tagging::Include*> order;
    for (const tagging::Include& include : source.includes)
        order.push_back(&include);
    std::ranges::stable_sort(order, {}, &tagging::Include::line);
    for (const tagging::Include* include : order) {
        PutVarint(file->includes, texts.Put(include->name));
        PutVarint(file->includes, std::uint64_t(include->line) * 2 + (include->isAngled ? 1 : 0));
        texts.Put(LeafOf(include->name));
    }
}

void SegmentBuilder::AddMentions(const tagging::ParsedSource& source, FileContent* file)
{
    numbers.clear();
    texts.Put(source.names, numbers);
    std::ranges::sort(numbers);
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    TextNumber before = 0;
    for (const TextNumber number : numbers) {
        PutVarint(file->mentions, number - before);
        before = number;
    }
}

std::vector<SegmentBuilder::FileNumber> SegmentBuilder::FilesByPath()
{
    std::vector<FileNumber> order(files.size());
    std::iota(order.begin(), order.end(), 0);
    std::erase_if(order, [this](FileNumber file) { return files[file].isDropped; });
    std::ranges::sort(order, {}, [this](FileNumber file) { return texts.Text(files[file].record.path); });
    return order;
}

base::Result<SegmentBuilder::Written> SegmentBuilder::Write(SegmentSink& sink)
{
    const std::vector<FileNumber> order = FilesByPath();
    Written written;
    written.newNumbers.resize(files.size());
    for (size_t i = 0; i < order.size(); i++)
        written.newNumbers[order[i]] = static_cast<FileNumber>(i);
    written.id = RandomNumber();

    sink.Begin(Section::Texts);
    sink.Append(texts.Bytes());
    sink.Begin(Section::TextEnds);
    AppendAll(sink, texts.Ends());
    const std::uint64_t symbolCount = WriteFiles(sink, order);
    WriteKeys(sink, order);
    const base::Result<void> result = sink.Finish(written.id, symbolCount);
    if (!result)
        return result.Failure();
    written.size = sink.Size();
    return written;
}

std::uint64_t SegmentBuilder::WriteFiles(SegmentSink& sink, const std::vector<FileNumber>& order)
{
    sink.Begin(Section::Files);
    std::uint64_t symbolCount = 0;
    FileRecord next = {};
    for (const FileNumber number : order) {
        FileContent& file = files[number];
        FileRecord& record = file.record;
        record.symbols = next.symbols;
        record.includes = next.includes;
        record.mentions = next.mentions;
        sink.AppendValue(record);
        next.symbols += static_cast<std::uint32_t>(file.symbols.size());
        next.includes += static_cast<std::uint32_t>(file.includes.size());
        next.mentions += static_cast<std::uint32_t>(file.mentions.size());
        symbolCount += record.symbolCount;
    }
    sink.AppendValue(next);
    constexpr std::pair<Section, std::string FileContent::*> kLists[] = {{Section::Symbols, &FileContent::symbols},
                                                                         {Section::Includes, &FileContent::includes},
                                                                         {Section::Mentions, &FileContent::mentions}};
    for (const auto& [section, bytes] : kLists) {
        sink.Begin(section);
        for (const FileNumber number : order)
            sink.Append(files[number].*bytes);
    }
    return symbolCount;
}

// Calls take(list, key, value) for all that can be found by a key, in the order of values.
template <class Take>
void SegmentBuilder::ForEachEntry(const std::vector<FileNumber>& order, const Take& take)
{
    for (FileNumber i = 0; i < order.size(); i++) {
        const FileContent& file = files[order[i]];
        take(KeyList::FilesWithLeaf, texts.Put(LeafOf(texts.Text(file.record.path))), i);
        for (VarintReader reader(file.symbols); !reader.AtEnd();) {
            const auto offset = static_cast<std::uint32_t>(reader.Place() - file.symbols.data());
            SymbolRecord symbol;
            ReadSymbol(reader, &symbol);
            take(KeyList::Symbols, symbol.texts[SymbolRecord::Name], file.record.symbols + offset);
            if (symbol.texts[SymbolRecord::Scope] != 0)
                take(KeyList::Members, symbol.texts[SymbolRecord::Scope], file.record.symbols + offset);
            if (symbol.texts[SymbolRecord::Bases] != 0)
                for (const std::string_view base : BaseNames(texts.Text(symbol.texts[SymbolRecord::Bases])))
                    take(KeyList::Derived, texts.Put(base), file.record.symbols + offset);
        }
        for (VarintReader reader(file.includes); !reader.AtEnd(); reader.Long()) {
            const auto offset = static_cast<std::uint32_t>(reader.Place() - file.includes.data());
            take(KeyList::IncludesOfLeaf, texts.Put(LeafOf(texts.Text(reader.Number()))),
                 file.record.includes + offset);
        }
        RisingNumbers mentions(file.mentions);
        for (TextNumber name = 0; mentions.Next(&name);)
            take(KeyList::MentioningFiles, name, i);
    }
}

// In the order of bytes.
std::vector<TextNumber> SegmentBuilder::Sorted(std::vector<TextNumber> keys) const
{
    SortTexts(keys, Case::Counts, [this](TextNumber text) { return texts.Text(text); });
    return keys;
}

// While another thread sorts, texts may be looked up, but none is new.
void SegmentBuilder::WriteKeys(SegmentSink& sink, const std::vector<FileNumber>& order)
{
    KeyLists lists(texts.Count());
    ForEachEntry(order, [&](KeyList list, TextNumber key, std::uint32_t) { lists.Count(list, key); });
    std::vector<TextNumber> found;
    for (TextNumber text = 1; text < texts.Count(); text++)
        if (lists.IsCounted(text))
            found.push_back(text);
    auto sorted = std::async(PolicyFor(found.size()), [&] { return Sorted(std::move(found)); });
    lists.StartPutting();
    ForEachEntry(order, [&](KeyList list, TextNumber key, std::uint32_t value) { lists.Put(list, key, value); });
    files = {};
    const std::vector<TextNumber> keys = sorted.get();
    sink.Begin(Section::Keys);
    AppendAll(sink, keys);

    std::vector<std::uint32_t> names;  // in 'keys'
    std::vector<std::uint32_t> scopes; // the same
    for (std::uint32_t i = 0; i < keys.size(); i++) {
        if (lists.Has(KeyList::Symbols, keys[i]))
            names.push_back(i);
        if (lists.Has(KeyList::Members, keys[i]))
            scopes.push_back(i);
    }
    auto inLowerCase = std::async(PolicyFor(names.size()), [&] {
        std::vector<std::uint32_t> sortedNames = names;
        SortTexts(sortedNames, Case::Ignored, [&](std::uint32_t key) { return texts.Text(keys[key]); });
        return sortedNames;
    });
    WritePostings(sink, keys, lists);
    sink.Begin(Section::Names);
    AppendAll(sink, inLowerCase.get());
    sink.Begin(Section::ScopeKeys);
    AppendAll(sink, scopes);
    WriteFuzzy(sink, keys, names);
}

void SegmentBuilder::WritePostings(SegmentSink& sink, const std::vector<TextNumber>& keys, const KeyLists& lists)
{
    std::vector<std::uint32_t> places;
    sink.Begin(Section::Postings);
    std::uint32_t place = 0;
    std::string postings;
    for (const TextNumber key : keys) {
        postings.clear();
        lists.Append(key, postings);
        sink.Append(postings);
        places.push_back(place);
        place += static_cast<std::uint32_t>(postings.size());
    }
    sink.Begin(Section::KeyPlaces);
    AppendAll(sink, places);
}

void SegmentBuilder::WriteFuzzy(SegmentSink& sink, const std::vector<TextNumber>& keys,
                                const std::vector<std::uint32_t>& byName)
{
    std::vector<std::uint8_t> lengths;
    std::vector<std::uint32_t> ends(kLongestFuzzy + 1);
    lengths.reserve(byName.size());
    texts.ForEach(
        byName.size(), [&](size_t i) { return keys[byName[i]]; },
        [&](std::string_view name) {
            lengths.push_back(static_cast<std::uint8_t>(std::min(name.size(), kLongestFuzzy)));
            ends[lengths.back()]++;
        });
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    std::vector<std::uint32_t> names(byName.size());
    for (size_t i = byName.size(); i-- > 0;)
        names[--ends[lengths[i]]] = byName[i];
    std::rotate(ends.begin(), ends.begin() + 1, ends.end()); // what was a length's end is now its beginning
    ends.back() = static_cast<std::uint32_t>(names.size());
    sink.Begin(Section::FuzzyEnds);
    AppendAll(sink, ends);
    sink.Begin(Section::FuzzyKeys);
    AppendAll(sink, names);
    const auto numberOf = [&](size_t i) { return keys[names[i]]; };
    sink.Begin(Section::FuzzyTraits);
    texts.ForEach(names.size(), numberOf, [&](std::string_view name) { sink.AppendValue(TraitsOf(name)); });
    sink.Begin(Section::FuzzyTexts);
    texts.ForEach(names.size(), numberOf, [&](std::string_view name) { sink.Append(name.substr(0, kLongestFuzzy)); });
}

} // namespace symbols
