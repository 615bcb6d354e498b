// Reads any bytes as the output of ctags, and as an old tags file. The result is always sorted lines that lookups can
// read, and old lines that stay are unchanged.
#include "fuzz/Lines.h"
#include "fuzz/Require.h"
#include "tagging/TagStore.h"
#include "tagging/ctags/CtagsOutput.h"
#include "tagsfile/OldTags.h"
#include "tagsfile/TagLine.h"
#include "tagsfile/TagsFileKind.h"
#include "tests/support/TempDirectory.h"
#include "vetch/support/ShellEscape.h"

#include <algorithm>
#include <cstdint>

namespace {

using tagsfile::Tag;
using Lines = std::vector<std::string>;

bool IsPlainText(std::string_view text)
{
    return text.find_first_of("\t\n\r") == std::string_view::npos;
}

void RequireReadable(const tagsfile::Tag& tag)
{
    Require(!tag.name.empty() && tag.name.front() != '!' && IsPlainText(tag.name), "a name is one");
    Require(IsPlainText({&tag.kind, 1}) && IsPlainText(tag.scope), "a line has no more fields than it should");
    const auto begins = [&tag](const char* token) { return tag.scope.starts_with(token); };
    Require(tag.scope.empty() || begins("class:") || begins("namespace:") || begins("struct:") || begins("union:"),
            "a scope is one that lookups know");
}

Lines All(tagsfile::LineSource& source)
{
    Lines lines;
    for (std::string_view line; source.Next(line);)
        lines.emplace_back(line);
    Require(std::ranges::is_sorted(lines), "lines are in order");
    for (const std::string& line : lines)
        Require(line.size() <= tagsfile::kLongestLine && line.find('\n') == line.size() - 1, "a line is one line");
    return lines;
}

void TryOutput(std::string_view output)
{
    const tagsfile::Tags read = tagging::ReadCtagsOutput(output);
    const Lines fields = {"a.h", "/long/way/b\\\\c.h"};
    tagging::TagStore store;
    Lines expected;
    for (const tagsfile::Tag& tag : read.tags) {
        RequireReadable(tag);
        const auto file = static_cast<unsigned>(tag.line % fields.size());
        std::string line;
        if (tagsfile::AppendTagLine(line, tag, fields[file]))
            expected.push_back(line);
        store.Add(file, tag);
    }
    std::ranges::sort(expected);
    tagging::TagsByFile leftOut;
    store.Sort(fields);
    Require(All(*store.Lines(fields, &leftOut)) == expected, "a store has the lines of its tags");
    size_t tooLong = 0;
    for (const auto& [file, tags] : leftOut)
        tooLong += tags;
    Require(tooLong + expected.size() == read.tags.size(), "tags that have no line are counted");
}

bool Goes(std::string_view field)
{
    return field.find('g') != std::string_view::npos;
}

Lines Staying(const std::string& path)
{
    const auto lines = tagsfile::LinesThatStay(path, Goes);
    Require(lines != nullptr, "old tags can be read");
    return All(*lines);
}

// Returns the line of the file as it should stay, if it is short enough; "" when it should not stay.
std::string StayingLine(std::string line)
{
    while (line.ends_with('\r'))
        line.pop_back();
    line += "\n";
    const auto field = tagsfile::FieldOfLine(line);
    return line == "\n" || line.front() == '!' || (field && Goes(*field)) ? "" : line;
}

void TryOldTags(const std::uint8_t* data, std::size_t size)
{
    static const TempDirectory files;
    const std::string path = files.Write("tags", std::string(reinterpret_cast<const char*>(data), size));
    tagsfile::WhatIs(path);
    const Lines staying = Staying(path);
    for (const std::string& line : Split(data, size, '\n'))
        if (const std::string stays = StayingLine(line); !stays.empty() && stays.size() <= tagsfile::kLongestLine)
            Require(std::ranges::binary_search(staying, stays), "a line that should stay does");
    std::string content;
    for (const std::string& line : staying)
        content += line;
    files.Write("tags", content);
    Require(Staying(path) == staying, "what has stayed once stays");
}

// A file's name has to survive the way from the writer to the readers.
void TryName(const std::string& name)
{
    const std::string path = "/home/user/" + name;
    for (const char* directory : {"/home/user", "/elsewhere"}) {
        const auto field = tagsfile::FileField(path, directory);
        if (!field || name.find('\0') != std::string::npos)
            continue;
        const bool isBelow = std::string(directory) == "/home/user" && !name.empty();
        Require(tagsfile::PathOfField(*field, directory) == path || (isBelow && name.front() == '/'),
                "a file is found again");
        Require((isBelow ? "/home/user/" : "") + DeEscaped(*field) == path, "lookups open the same file");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    TryOutput({reinterpret_cast<const char*>(data), size});
    TryOldTags(data, size);
    for (const std::string& name : Split(data, size, '\t'))
        TryName(name);
    return 0;
}
