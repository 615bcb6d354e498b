// Damages the files of an index. What is left of its answers is right: all of them, those of the undamaged parts, or
// none. With checksums that fit the damage, as a forger would have them, nothing but the answers may be wrong.
//
// The first byte selects whether checksums fit; the rest are edits of eight bytes: the file, what is done, where (three
// bytes), and a value (three bytes).
#include "fuzz/Require.h"
#include "symbols/store/Checksum.h"
#include "symbols/store/Format.h"
#include "symbols/store/Store.h"
#include "tests/support/AnswersOf.h"
#include "tests/support/FileContent.h"
#include "tests/support/TempDirectory.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Files = std::map<std::string, std::string>; // their contents by their names
constexpr size_t kEdit = 8;

// A file with all that an index holds of one.
tagging::ParsedSource SourceNumber(unsigned number)
{
    tagging::ParsedSource source;
    source.contentHash = number * 77;
    const auto text = [&source](const std::string& value) { return source.texts.Put(value); };
    for (unsigned line = 1; line <= 8 + number; ++line) {
        tagging::Symbol symbol;
        symbol.name = text("name" + std::to_string(line * number % 13));
        symbol.scope = line % 2 == 0 ? text("Scope" + std::to_string(number % 3) + "::Inner") : "";
        symbol.type = "unsigned int";
        symbol.signature = line % 3 == 0 ? std::string_view("(int a, char* b)") : "";
        symbol.bases = line % 5 == 0 ? text("outer::Base" + std::to_string(number % 4) + ",Other") : "";
        symbol.line = line;
        symbol.endLine = line + 1;
        symbol.kind = line % 2 == 0 ? tagging::SymbolKind::Function : tagging::SymbolKind::Class;
        symbol.isDefinition = line % 3 != 0;
        source.symbols.push_back(symbol);
        source.names.push_back(symbol.name);
    }
    std::ranges::sort(source.names);
    source.names.erase(std::unique(source.names.begin(), source.names.end()), source.names.end());
    source.includes = {{text("part" + std::to_string(number / 2) + ".h"), 1, false}, {"stdio.h", 2, true}};
    return source;
}

void Put(symbols::Store& store, unsigned from, unsigned to)
{
    const base::CancelToken never;
    auto writer = store.Write({.root = "/tree", .patterns = "patterns"}, false, never);
    Require(static_cast<bool>(writer), "a store can be written");
    for (unsigned number = from; number < to; ++number)
        (*writer)->Put("core/part" + std::to_string(number) + ".h", {.size = number, .modified = 2, .inode = 3},
                       SourceNumber(number));
    (*writer)->Remove("core/part" + std::to_string(from / 2) + ".h");
    (*writer)->Touch("core/part1.h", {.size = 1, .modified = static_cast<std::int64_t>(to), .inode = 3});
    Require(static_cast<bool>((*writer)->Commit()), "a store can be committed");
}

Files Read(const std::string& directory)
{
    Files files;
    for (const std::string& name : NamesIn(directory))
        files[name] = Content(directory + "/" + name);
    return files;
}

std::string Answers(const std::string& directory)
{
    const symbols::Store store(directory);
    store.Header();
    const symbols::SnapshotPointer snapshot = store.Current();
    if (snapshot == nullptr)
        return "";
    const std::string answers = AnswersOf::Of(snapshot);
    // Damage may show while answers are collected, so the first line is the last word.
    return (snapshot->IsDamaged() ? "damaged\n" : "whole\n") + answers;
}

// Scores are left out: a limited answer may have others when better ones are damaged.
std::set<std::string> FoundIn(const std::string& answers)
{
    std::set<std::string> found;
    std::istringstream lines(answers);
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("    ") && line != "    and more")
            found.insert(line.substr(std::min(line.find("core/"), line.size())));
    return found;
}

struct Original {
    Original()
    {
        symbols::Store store(directory.Path());
        Put(store, 1, 30);
        Put(store, 30, 33);
        Put(store, 8, 11);
        files = Read(directory.Path());
        answers = Answers(directory.Path());
        found = FoundIn(answers);
        Require(answers.starts_with("whole\n") && found.size() > 200, "there is an index to damage");
    }

    const TempDirectory directory;
    Files files;
    std::string answers;
    std::set<std::string> found;
};

template <class T>
void Store(std::string& file, size_t place, const T& value)
{
    if (place <= file.size() && file.size() - place >= sizeof(value))
        std::memcpy(file.data() + place, &value, sizeof(value));
}

void FitSegment(std::string& file)
{
    symbols::SegmentFooter footer;
    if (file.size() < sizeof(footer))
        return;
    const size_t end = file.size() - sizeof(footer);
    std::memcpy(&footer, file.data() + end, sizeof(footer));
    const auto& blocks = footer.sections[static_cast<size_t>(symbols::Section::Blocks)];
    if (blocks.offset <= end && blocks.length <= end - blocks.offset) {
        for (size_t block = 0; block * symbols::kBlockSize < blocks.offset; ++block)
            if ((block + 1) * sizeof(std::uint64_t) <= blocks.length) {
                const size_t start = block * symbols::kBlockSize;
                const size_t length = std::min<size_t>(symbols::kBlockSize, blocks.offset - start);
                Store(file, blocks.offset + block * sizeof(std::uint64_t),
                      symbols::Checksum(std::string_view(file).substr(start, length)));
            }
        footer.blocksChecksum = symbols::Checksum(std::string_view(file).substr(blocks.offset, blocks.length));
    }
    footer.checksum =
        symbols::Checksum({reinterpret_cast<const char*>(&footer), offsetof(symbols::SegmentFooter, checksum)});
    Store(file, end, footer);
}

void FitManifest(std::string& file)
{
    if (file.size() < sizeof(std::uint64_t))
        return;
    const size_t end = file.size() - sizeof(std::uint64_t);
    Store(file, end, symbols::Checksum(std::string_view(file).substr(0, end)));
}

void Edit(Files& files, const std::uint8_t* edit)
{
    // Names of segments are random, sizes are not.
    std::vector<Files::iterator> bySize;
    for (auto each = files.begin(); each != files.end(); ++each)
        bySize.push_back(each);
    std::ranges::stable_sort(bySize, std::greater{}, [](const auto& each) { return each->second.size(); });
    const auto file = bySize[edit[0] % bySize.size()];
    std::string& content = file->second;
    const size_t asked = edit[2] + (size_t(edit[3]) << 8) + (size_t(edit[4]) << 16);
    const std::uint32_t value = edit[5] + (std::uint32_t(edit[6]) << 8) + (std::uint32_t(edit[7]) << 16);
    // Counted from the end, too: that is where a segment says what it contains.
    const size_t place = content.empty()      ? 0
                         : (edit[1] & 8) != 0 ? content.size() - 1 - asked % content.size()
                                              : asked % content.size();
    switch (edit[1] % 8) {
    case 0:
        content.resize(place);
        break;
    case 1:
        content += std::string(value % 5000, static_cast<char>(edit[2]));
        break;
    case 2:
        files.erase(file);
        break;
    case 3:
        Store(content, place, ~value);
        break;
    case 4:
        Store(content, place, std::uint64_t(value) << 32);
        break;
    case 5:
        Store(content, place, static_cast<std::uint8_t>(value));
        break;
    default:
        Store(content, place, value);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Original original;
    if (size < 1 + kEdit)
        return 0;
    Files files = original.files;
    for (size_t at = 1; at + kEdit <= size && !files.empty(); at += kEdit)
        Edit(files, data + at);
    const bool fits = data[0] % 2 != 0;
    const TempDirectory damaged;
    for (auto& [name, content] : files) {
        if (fits)
            name.ends_with(".segment") ? FitSegment(content) : FitManifest(content);
        damaged.Write(name, content);
    }
    const std::string answers = Answers(damaged.Path());
    if (fits || answers.empty() || files == original.files)
        return 0;
    if (answers.starts_with("whole\n"))
        Require(answers == original.answers, "damage that is not noticed is harmless");
    for (const std::string& found : FoundIn(answers))
        Require(original.found.contains(found), ("a damaged index finds only what is right, and not " + found).c_str());
    return 0;
}
