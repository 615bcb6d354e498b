// Reads any bytes as a source, and as what ctags says about it. Names and includes are parts of the source, once each;
// symbols are in the order of their lines.
#include "fuzz/Lines.h"
#include "fuzz/Require.h"
#include "tagging/SourceReader.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string_view>

namespace {

constexpr const char* kPaths[] = {"/tree/a.c", "/tree/a.h", "/tree/a.cpp", "/tree/a.m", "/tree/a.mm", "/tree/c++/a"};

void RequireNames(const tagging::ParsedSource& source, std::string_view text)
{
    std::set<std::string_view> once;
    for (const std::string_view name : source.names) {
        Require(!name.empty() && once.insert(name).second, "a name is mentioned once");
        Require(text.find(name) != std::string_view::npos, "a name stands in the source");
        Require(name.find_first_of(" \t\n\"'/") == std::string_view::npos, "a name is an identifier");
    }
}

void RequireIncludes(const tagging::ParsedSource& source, size_t lines)
{
    unsigned last = 1;
    for (const tagging::Include& include : source.includes) {
        Require(include.line >= last && include.line <= lines, "includes are in the order of the source");
        Require(include.name.find('\n') == std::string_view::npos, "an include is in one line");
        last = include.line;
    }
}

void RequireSymbols(const tagging::ParsedSource& source)
{
    unsigned last = 0;
    for (const tagging::Symbol& symbol : source.symbols) {
        Require(!symbol.name.empty(), "a symbol has a name");
        Require(symbol.kind != tagging::SymbolKind::None, "a symbol has a kind");
        Require(!tagging::LongName(symbol.kind).empty(), "a kind has a name");
        Require(symbol.line >= last, "symbols are in the order of lines");
        last = symbol.line;
    }
}

} // namespace

// The text, a byte 0 and ctags' lines; or only the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view all(reinterpret_cast<const char*>(data), size);
    const size_t end = std::min(all.find('\0'), size);
    const std::string_view text = all.substr(0, end);
    const std::string_view output = all.substr(std::min(end + 1, size));
    const auto lines = static_cast<size_t>(std::ranges::count(text, '\n')) + 1;
    tagging::Settings settings;
    settings.ignoredMacros = {"IGNORED"};
    tagging::SourceReader reader(settings);
    for (const char* path : kPaths) {
        const auto source = reader.Read(path, text).With(output);
        RequireNames(*source, text);
        RequireIncludes(*source, lines);
        RequireSymbols(*source);
    }
    return 0;
}
