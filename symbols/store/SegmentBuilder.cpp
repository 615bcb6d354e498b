#include "symbols/store/SegmentBuilder.h"

#include "symbols/store/KeyLists.h"
#include "symbols/store/NameTraits.h"
#include "symbols/store/Names.h"
#include "symbols/store/SortTexts.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <random>

namespace symbols {

// Everything that can be found by a key.
class SegmentBuilder::Lists {
public:
    KeyListTable& operator[](KeyList list) { return tables[static_cast<size_t>(list)]; }

    void Gather(size_t texts)
    {
        for (KeyListTable& table : tables)
            table.Gather(texts);
    }

    std::uint8_t Present(TextNumber key) const
    {
        unsigned bits = 0;
        for (size_t i = 0; i < kKeyLists; i++)
            bits |= unsigned(tables[i].Has(key)) << i;
        return static_cast<std::uint8_t>(bits);
    }

    void Append(TextNumber key, std::string& out) const
    {
        out.push_back(static_cast<char>(Present(key)));
        for (const KeyListTable& table : tables)
            if (table.Has(key))
                table.Append(key, out);
    }

private:
    std::array<KeyListTable, kKeyLists> tables;
};

namespace {

template <class T>
void AppendAll(SegmentSink& sink, const std::vector<T>& values)
{
    sink.Append({reinterpret_cast<const char*>(values.data()), values.size() * sizeof(T)});
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
    for (const tagging::Symbol* symbol : order) {
        PutSymbol(file->symbols, {{texts.Put(symbol->name), texts.Put(symbol->scope), texts.Put(symbol->type),
                                   texts.Put(symbol->signature), texts.Put(symbol->bases),
                                   texts.Put(symbol->templateParameters), texts.Put(symbol->target)},
                                  *symbol});
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
    std::vector<TextNumber> numbers;
    for (const std::string_view name : source.names)
        numbers.push_back(texts.Put(name));
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

void SegmentBuilder::WriteKeys(SegmentSink& sink, const std::vector<FileNumber>& order)
{
    Lists lists;
    for (size_t i = 0; i < order.size(); i++) {
        const FileContent& file = files[order[i]];
        lists[KeyList::FilesWithLeaf].Put(texts.Put(LeafOf(texts.Text(file.record.path))), static_cast<FileNumber>(i));
        VarintReader symbols(file.symbols);
        while (!symbols.AtEnd()) {
            const auto place = file.record.symbols + static_cast<std::uint32_t>(symbols.Place() - file.symbols.data());
            SymbolRecord symbol;
            ReadSymbol(symbols, &symbol);
            lists[KeyList::Symbols].Put(symbol.texts[SymbolRecord::Name], place);
            if (symbol.texts[SymbolRecord::Scope] != 0)
                lists[KeyList::Members].Put(symbol.texts[SymbolRecord::Scope], place);
            if (symbol.texts[SymbolRecord::Bases] != 0)
                for (const std::string_view base : BaseNames(texts.Text(symbol.texts[SymbolRecord::Bases])))
                    lists[KeyList::Derived].Put(texts.Put(base), place);
        }
        VarintReader includes(file.includes);
        while (!includes.AtEnd()) {
            const auto place =
                file.record.includes + static_cast<std::uint32_t>(includes.Place() - file.includes.data());
            lists[KeyList::IncludesOfLeaf].Put(texts.Put(LeafOf(texts.Text(includes.Number()))), place);
            includes.Number();
        }
        RisingNumbers mentions(file.mentions);
        for (TextNumber name = 0; mentions.Next(&name);)
            lists[KeyList::MentioningFiles].Put(name, static_cast<FileNumber>(i));
    }
    lists.Gather(texts.Count());

    std::vector<TextNumber> keys;
    for (TextNumber text = 1; text < texts.Count(); text++)
        if (lists.Present(text) != 0)
            keys.push_back(text);
    SortTexts(keys, Case::Counts, [this](TextNumber text) { return texts.Text(text); });
    sink.Begin(Section::Keys);
    AppendAll(sink, keys);

    std::string postings;
    std::vector<std::uint32_t> names; // in 'keys'
    sink.Begin(Section::KeyPlaces);
    for (std::uint32_t i = 0; i < keys.size(); i++) {
        sink.AppendValue(static_cast<std::uint32_t>(postings.size()));
        lists.Append(keys[i], postings);
        if (lists[KeyList::Symbols].Has(keys[i]))
            names.push_back(i);
    }
    sink.Begin(Section::Postings);
    sink.Append(postings);

    SortTexts(names, Case::Ignored, [&](std::uint32_t key) { return texts.Text(keys[key]); });
    sink.Begin(Section::Names);
    AppendAll(sink, names);
    sink.Begin(Section::ScopeKeys);
    for (std::uint32_t i = 0; i < keys.size(); i++)
        if (lists[KeyList::Members].Has(keys[i]))
            sink.AppendValue(i);
    std::ranges::sort(names); // by name, as the keys are
    WriteFuzzy(sink, keys, names);
}

void SegmentBuilder::WriteFuzzy(SegmentSink& sink, const std::vector<TextNumber>& keys,
                                const std::vector<std::uint32_t>& byName)
{
    const auto shown = [&](std::uint32_t key) { return texts.Text(keys[key]).substr(0, kLongestFuzzy); };
    std::vector<std::uint32_t> ends(kLongestFuzzy + 1);
    for (const std::uint32_t key : byName)
        ends[shown(key).size()]++;
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    std::vector<std::uint32_t> names(byName.size());
    for (auto key = byName.rbegin(); key != byName.rend(); ++key)
        names[--ends[shown(*key).size()]] = *key;
    std::rotate(ends.begin(), ends.begin() + 1, ends.end()); // what was a length's end is now its beginning
    ends.back() = static_cast<std::uint32_t>(names.size());
    sink.Begin(Section::FuzzyEnds);
    AppendAll(sink, ends);
    sink.Begin(Section::FuzzyKeys);
    AppendAll(sink, names);
    sink.Begin(Section::FuzzyTraits);
    for (const std::uint32_t key : names)
        sink.AppendValue(TraitsOf(shown(key)));
    sink.Begin(Section::FuzzyTexts);
    for (const std::uint32_t key : names)
        sink.Append(shown(key));
}

} // namespace symbols
