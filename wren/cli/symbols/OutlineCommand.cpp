#include "wren/cli/symbols/SymbolCommands.h"

#include "base/ExitStatus.h"
#include "symbols/Index.h"
#include "tagging/SourceParser.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/symbols/SymbolRow.h"
#include "wren/core/Documents.h"
#include "wren/core/ProgramOutput.h"
#include "wren/symbols/Outline.h"
#include "wren/symbols/ShownNames.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace wren {

namespace {

using Json = nlohmann::ordered_json;
using Source = tagging::ParsedSource;

constexpr const char* kOutline = "the outline";

constexpr const char* kOutlineHelp =
    R"(Prints the symbols of a source file, a line each: the line number, and indented by its depth
the kind and the name. "-" reads the source from standard input. No index is needed.

With --json, each symbol of the top is an object on one line, with those inside of it in
"children".

Exit status: 0 symbols were printed, 1 there are none, 2 wrong usage, or a file that cannot be
read or parsed.

Examples:
    wren outline src/shape.h
    wren outline src/shape.h --json
    git show HEAD~5:src/shape.cpp | wren outline - --language C++)";

// The suffix decides how a text is read.
const std::map<std::string, std::string> kSuffixes = {
    {"C", ".c"}, {"C++", ".cpp"}, {"Objective-C", ".m"}, {"Objective-C++", ".mm"}};

struct OutlineWords {
    std::string file;
    std::string language;
    bool json = false;
};

std::string NameOf(const tagging::Symbol& symbol, bool isInside)
{
    tagging::Symbol shown = symbol;
    if (isInside)
        shown.scope = {};
    return QualifiedName(shown);
}

std::string TextOf(const std::vector<OutlineNode>& nodes, size_t depth)
{
    std::string text;
    for (const OutlineNode& node : nodes) {
        const std::string line = std::to_string(node.symbol->line);
        text += std::string(line.size() < 6 ? 6 - line.size() : 0, ' ') + line + "  " + std::string(2 * depth, ' ') +
                std::string(tagging::LongName(node.symbol->kind)) + " " + NameOf(*node.symbol, depth > 0) + "\n" +
                TextOf(node.children, depth + 1);
    }
    return text;
}

Json JsonOf(const OutlineNode& node)
{
    Json json{{"line", node.symbol->line}};
    json.update(SymbolJson(*node.symbol));
    if (!node.children.empty())
        json["children"] = Json::array();
    for (const OutlineNode& child : node.children)
        json["children"].push_back(JsonOf(child));
    return json;
}

std::string Text(const std::vector<OutlineNode>& nodes, bool json)
{
    if (!json)
        return TextOf(nodes, 0);
    std::string lines;
    for (const OutlineNode& node : nodes)
        lines += JsonLine(JsonOf(node));
    return lines;
}

std::optional<std::string> ReadText(const OutlineWords& words, std::string* error)
{
    if (words.file != "-")
        return ReadWholeFile(std::filesystem::absolute(words.file), error);
    return std::string(std::istreambuf_iterator<char>(std::cin), {});
}

// The name that decides how the text is read.
std::string PathOf(const OutlineWords& words)
{
    std::filesystem::path path = std::filesystem::absolute(words.file == "-" ? "text" : words.file);
    if (!words.language.empty())
        path.replace_extension(kSuffixes.at(words.language));
    return path;
}

base::Result<std::unique_ptr<Source>> Parse(const OutlineWords& words, std::string_view text)
{
    const base::Result<tagging::Settings> settings = symbols::IndexSettings();
    if (!settings)
        return settings.Failure();
    return tagging::TextParser(*settings).Parse(PathOf(words), text, tagging::TextParser::Locals::No);
}

int RunOutline(const OutlineWords& words)
{
    if (words.file == "-" && words.language.empty()) {
        Complain("standard input has no name that tells its language; use --language");
        return base::exit_status::kUnusable;
    }
    ProgramOutput output;
    std::string error;
    const std::optional<std::string> text = ReadText(words, &error);
    if (!text) {
        Complain(error);
        return base::exit_status::kUnusable;
    }
    const base::Result<std::unique_ptr<Source>> source = Parse(words, *text);
    if (!source) {
        Complain(source.Failure().Message());
        return base::exit_status::kUnusable;
    }
    if ((*source)->symbols.empty()) {
        Complain("there is no symbol in " + words.file);
        return base::exit_status::kNothing;
    }
    return WriteOrComplain(output, Text(OutlineOf((*source)->symbols), words.json), kOutline)
               ? base::exit_status::kDone
               : base::exit_status::kUnusable;
}

} // namespace

void AddOutlineCommand(CLI::App& app, int* status)
{
    CLI::App* command = app.add_subcommand("outline", "Print the symbols of a source file as a tree");
    auto words = std::make_shared<OutlineWords>();
    command->add_option("file", words->file, "The source file, or - to read it from standard input")->required();
    command->add_option("--language", words->language, "C, C++, Objective-C or Objective-C++ (default: by the name)")
        ->transform(CLI::IsMember(kSuffixes, CLI::ignore_case));
    command->add_flag("--json", words->json, "Print JSON, an object a line");
    command->footer(kOutlineHelp);
    command->callback([words, status] { *status = RunOutline(*words); });
}

} // namespace wren
