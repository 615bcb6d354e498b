#include "symbols/TagsReader.h"

#include "base/Paths.h"
#include "symbols/PatternLines.h"
#include "symbols/RootPaths.h"
#include "symbols/store/Store.h"
#include "symbols/update/ReadSmallFile.h"
#include "symbols/update/SourceNames.h"
#include "tagging/SourceFamily.h"
#include "tagging/SymbolLetters.h"
#include "tagging/SymbolOutput.h"
#include "tagsfile/LineReader.h"
#include "tagsfile/TagFields.h"
#include "tagsfile/TagsFileKind.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <string_view>
#include <sys/stat.h>

namespace symbols {

namespace {

using tagging::SymbolKind;

constexpr std::uint64_t kLargestTagsFile = 1024ull << 20; // bytes
constexpr size_t kLargestSource = size_t(16) << 20;       // bytes; in a larger one patterns are not looked for

// The lines of one source, as ctags writes them for us: with long names of kinds, and a line number as address.
struct SourceTags {
    std::string lines;
    struct Unplaced { // has a pattern, but no line
        std::string pattern;
        std::string before; // of the line number, in the line of output
        std::string after;
    };
    std::vector<Unplaced> unplaced;
};

bool IsObjectiveC(std::string_view path)
{
    const auto says = tagging::ReadNameOfSource(path).says;
    return says == tagging::NameOfSource::Says::ObjectiveC || says == tagging::NameOfSource::Says::ObjectiveCplusplus;
}

SymbolKind KindOfLetter(char letter, std::string_view path)
{
    if (const SymbolKind kind = tagging::KindOfObjectiveCLetter(letter); IsObjectiveC(path) && kind != SymbolKind::None)
        return kind;
    for (int i = 1; i < static_cast<int>(SymbolKind::Interface); i++)
        if (tagging::LetterOf(static_cast<SymbolKind>(i)) == letter)
            return static_cast<SymbolKind>(i);
    return tagging::KindOfObjectiveCLetter(letter);
}

// Fields are separated by tabs. The first one without a name is the kind.
class Fields {
public:
    Fields(std::string_view text, std::string_view path)
    {
        while (!text.empty()) {
            const size_t end = std::min(text.find('\t'), text.size());
            Add(text.substr(0, end), path);
            text.remove_prefix(std::min(end + 1, text.size()));
        }
    }

    std::string_view kind;
    std::string_view line;
    std::string others; // each with a tab in front

private:
    void Add(std::string_view field, std::string_view path)
    {
        const size_t colon = field.find(':');
        const std::string_view name = colon == std::string_view::npos ? "kind" : field.substr(0, colon);
        const std::string_view value = colon == std::string_view::npos ? field : field.substr(colon + 1);
        if (name == "kind")
            kind = value.size() == 1 ? tagging::LongName(KindOfLetter(value.front(), path)) : value;
        else if (name == "line")
            line = value;
        else
            others.append("\t").append(name == "scope" ? value : field);
    }
};

// By file. One tags file.
class Collector {
public:
    Collector(std::map<std::string, SourceTags>& sources, std::string directory)
        : sources(sources), directory(std::move(directory))
    {
    }

    void Add(std::string_view line)
    {
        while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
            line.remove_suffix(1);
        const std::optional<std::string_view> field = tagsfile::FieldOfLine(line);
        const std::optional<std::string_view> after = tagsfile::AfterAddressOfLine(line);
        if (!field || !after)
            return;
        const std::string_view name = tagsfile::NameOfLine(line);
        const size_t begin = name.size() + field->size() + 2;
        const std::string_view address = line.substr(begin, line.size() - after->size() - begin);
        const std::string& path = PathOf(*field);
        if (const std::string_view leaf = std::string_view(path).substr(path.rfind('/') + 1);
            !IsSourceName(leaf) && !CanBeHeaderWithoutSuffix(leaf))
            return;
        std::string_view extension = after->starts_with(tagsfile::kExtensionSign)
                                         ? after->substr(tagsfile::kExtensionSign.size())
                                         : std::string_view();
        extension.remove_prefix(extension.starts_with('\t') ? 1 : 0);
        Put(sources[path], std::string(name), address, Fields(extension, path));
    }

private:
    // Tags of a file stand together only by chance, but often enough.
    const std::string& PathOf(std::string_view field)
    {
        if (field != lastField || lastPath.empty()) {
            lastField = field;
            lastPath = std::filesystem::path(tagsfile::PathOfField(field, directory)).lexically_normal();
        }
        return lastPath;
    }

    static void Put(SourceTags& source, const std::string& name, std::string_view address, const Fields& fields)
    {
        const std::string before = name + "\t\t";
        const std::string_view kind = fields.kind.empty() ? tagging::LongName(SymbolKind::Variable) : fields.kind;
        std::string after = ";\"\t";
        after.append(kind).append(fields.others).append("\n");
        const size_t digits = std::min(address.find_first_not_of("0123456789"), address.size());
        const std::string_view line = !fields.line.empty() ? fields.line : address.substr(0, digits);
        if (line.empty())
            source.unplaced.push_back({PlainPattern(address), before, std::move(after)});
        else
            source.lines.append(before).append(line).append(after);
    }

    std::map<std::string, SourceTags>& sources;
    const std::string directory;
    std::string lastField;
    std::string lastPath;
};

void FindPlaces(const std::string& path, SourceTags& source)
{
    if (source.unplaced.empty())
        return;
    const std::optional<std::string> text = ReadSmallFile(path, Links::Follow, kLargestSource);
    const PatternLines lines(text ? *text : std::string_view());
    for (const SourceTags::Unplaced& each : source.unplaced)
        source.lines.append(each.before).append(std::to_string(lines.LineOf(each.pattern))).append(each.after);
}

tagging::Language LanguageOf(std::string_view path)
{
    switch (tagging::ReadNameOfSource(path).says) {
    case tagging::NameOfSource::Says::C:
        return tagging::Language::C;
    case tagging::NameOfSource::Says::ObjectiveC:
        return tagging::Language::ObjectiveC;
    case tagging::NameOfSource::Says::ObjectiveCplusplus:
        return tagging::Language::ObjectiveCplusplus;
    case tagging::NameOfSource::Says::Nothing:
    case tagging::NameOfSource::Says::Cplusplus:
        break;
    }
    return tagging::Language::Cplusplus;
}

tagging::ParsedSource SourceOf(const std::string& path, const SourceTags& tags)
{
    tagging::ParsedSource source;
    source.language = LanguageOf(path);
    source.symbols = tagging::ReadSymbols(tags.lines, source.texts);
    std::ranges::stable_sort(source.symbols, {}, &tagging::Symbol::line);
    return source;
}

// Nullopt, or why it cannot be read.
std::optional<std::string> Collect(const std::string& path, std::map<std::string, SourceTags>& sources,
                                   const base::CancelToken& cancel)
{
    struct stat status;
    tagsfile::LineReader reader;
    if (::stat(path.c_str(), &status) != 0 || !reader.Open(path.c_str()))
        return "cannot read " + base::Shown(path);
    std::optional<std::string> problem;
    if (static_cast<std::uint64_t>(status.st_size) > kLargestTagsFile)
        problem = base::Shown(path) + " is too large: at most 1 GB of tags is held";
    else if (tagsfile::WhatIs(path) != tagsfile::Target::Tags)
        problem = base::Shown(path) + " is not a tags file";
    Collector collector(sources, path.substr(0, path.rfind('/')));
    for (std::string_view line; !problem && !cancel.IsCancelled() && reader.Next(line);)
        collector.Add(line);
    reader.Close();
    return problem;
}

} // namespace

StampsOfFiles StampsOf(const std::vector<std::string>& paths)
{
    StampsOfFiles stamps;
    for (const std::string& path : paths) {
        struct stat status;
        const bool exists = ::stat(path.c_str(), &status) == 0;
        stamps.emplace_back(path, exists ? tagging::FileStamp::Of(status) : tagging::FileStamp());
    }
    return stamps;
}

TagsRead ReadTagsFiles(const std::vector<std::string>& paths, const std::string& root, const base::CancelToken& cancel)
{
    TagsRead read;
    std::map<std::string, SourceTags> sources;
    read.stamps = StampsOf(paths);
    for (const std::string& path : paths) {
        if (const std::optional<std::string> problem = Collect(path, sources, cancel))
            read.problems.emplace_back(path, *problem);
    }
    const RootPaths place(root);
    const auto writer = WriteInMemory(nullptr, [&](SnapshotPointer made) { read.snapshot = std::move(made); });
    for (auto& [path, tags] : sources) {
        if (cancel.IsCancelled())
            break;
        FindPlaces(path, tags);
        writer->Put(place.Below(path).value_or(path), {}, SourceOf(path, tags));
        tags = {};
    }
    if (!sources.empty()) [[maybe_unused]]
        const base::Result<void> written = writer->Commit(); // memory does not fail
    return read;
}

TagsRead TagsFiles::Set(std::vector<std::string> given, const std::string& root, const base::CancelToken& cancel)
{
    paths = std::move(given);
    TagsRead read = ReadTagsFiles(paths, root, cancel);
    stamps = cancel.IsCancelled() ? StampsOfFiles() : read.stamps;
    return read;
}

std::optional<TagsRead> TagsFiles::ReadIfChanged(const std::string& root, const base::CancelToken& cancel)
{
    if (StampsOf(paths) == stamps)
        return std::nullopt;
    return Set(paths, root, cancel);
}

} // namespace symbols
