#include "symbols/store/DecodedFile.h"

namespace symbols {

bool DecodeSymbol(const Segment& segment, VarintReader& reader, tagging::Symbol* symbol)
{
    SymbolRecord record;
    if (!ReadSymbol(reader, &record)) {
        segment.SetDamaged();
        return false;
    }
    return FillSymbol(segment, record, symbol);
}

bool FillSymbol(const Segment& segment, const SymbolRecord& record, tagging::Symbol* symbol)
{
    constexpr std::string_view tagging::Symbol::*kTexts[] = {
        &tagging::Symbol::name,      &tagging::Symbol::scope, &tagging::Symbol::type,
        &tagging::Symbol::signature, &tagging::Symbol::bases, &tagging::Symbol::templateParameters,
        &tagging::Symbol::target,
    };
    *symbol = record.rest;
    for (size_t i = 0; i < SymbolRecord::kTexts; i++) {
        if (record.texts[i] == 0)
            continue;
        const std::optional<std::string_view> text = segment.Text(record.texts[i]);
        if (!text)
            return false;
        symbol->*kTexts[i] = *text;
    }
    return true;
}

bool DecodeInclude(const Segment& segment, VarintReader& reader, tagging::Include* include)
{
    const TextNumber name = reader.Number();
    const std::uint64_t line = reader.Long();
    const std::optional<std::string_view> text = segment.Text(name);
    if (reader.Failed())
        segment.SetDamaged();
    if (reader.Failed() || !text)
        return false;
    *include = {*text, static_cast<unsigned>(line / 2), line % 2 != 0};
    return true;
}

namespace {

bool DecodeLists(const Segment& segment, FileInSegment file, tagging::ParsedSource* source)
{
    const auto symbols = segment.ListOf(file, Section::Symbols);
    const auto includes = segment.ListOf(file, Section::Includes);
    const auto mentions = segment.ListOf(file, Section::Mentions);
    if (!symbols || !includes || !mentions)
        return false;
    for (VarintReader reader(symbols->bytes); !reader.AtEnd();)
        if (!DecodeSymbol(segment, reader, &source->symbols.emplace_back()))
            return false;
    for (VarintReader reader(includes->bytes); !reader.AtEnd();)
        if (!DecodeInclude(segment, reader, &source->includes.emplace_back()))
            return false;
    RisingNumbers names(mentions->bytes);
    for (TextNumber number = 0; names.Next(&number);) {
        const std::optional<std::string_view> name = segment.Text(number);
        if (!name)
            return false;
        source->names.push_back(*name);
    }
    return true;
}

} // namespace

std::optional<DecodedFile> DecodeFile(const Segment& segment, FileInSegment file)
{
    const std::optional<FileRecord> record = segment.File(file);
    const std::optional<std::string_view> path = segment.PathOf(file);
    DecodedFile decoded;
    if (!record || !path || !DecodeLists(segment, file, &decoded.source))
        return std::nullopt;
    decoded.path = *path;
    decoded.stamp = {record->size, record->modified, record->inode};
    decoded.source.contentHash = record->contentHash;
    decoded.source.language = static_cast<tagging::Language>(record->language);
    decoded.source.isIncomplete = record->isIncomplete != 0;
    return decoded;
}

} // namespace symbols
