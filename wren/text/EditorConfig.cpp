#include "wren/text/EditorConfig.h"

#include "base/CancelToken.h"
#include "base/ChildProcess.h"
#include "base/FindProgram.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <sys/stat.h>

namespace wren {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::milliseconds kPatience(500);
constexpr off_t kLongestFile = 64 * 1024; // bytes
constexpr int kWidest = 64;               // columns, of indentation
constexpr int kLongestLine = 10'000;      // columns

// Whether one of the directories from 'directory' up has a file. The program would wait for a pipe.
base::Result<bool> HasFile(fs::path directory)
{
    for (;; directory = directory.parent_path()) {
        const std::string file = directory / ".editorconfig";
        struct stat status;
        if (::stat(file.c_str(), &status) == 0) {
            if (!S_ISREG(status.st_mode) || status.st_size > kLongestFile)
                return base::Error{file + (S_ISREG(status.st_mode) ? " is too long" : " is not a regular file") +
                                   ": no .editorconfig is followed here"};
            return true;
        }
        if (!directory.has_relative_path())
            return false;
    }
}

std::optional<int> NumberIn(std::string_view text, int most)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 1 || number > most)
        return std::nullopt;
    return number;
}

struct LineEndsName {
    std::string_view name;
    LineEnds ends;
};

constexpr LineEndsName kLineEnds[] = {{"lf", LineEnds::Unix}, {"crlf", LineEnds::Windows}, {"cr", LineEnds::Mac}};

std::optional<LineEnds> LineEndsIn(std::string_view text)
{
    const auto* const found = std::ranges::find(kLineEnds, text, &LineEndsName::name);
    return found == std::end(kLineEnds) ? std::nullopt : std::optional(found->ends);
}

std::optional<TextEncoding> EncodingIn(std::string_view text)
{
    if (text == "latin1")
        return TextEncoding{"ISO-8859-1", false};
    if (text == "utf-8" || text == "utf-8-bom")
        return TextEncoding{"UTF-8", text != "utf-8"};
    if (text == "utf-16le" || text == "utf-16be")
        return TextEncoding{text.ends_with("le") ? "UTF-16LE" : "UTF-16BE", true};
    return std::nullopt;
}

void Take(std::string_view name, std::string_view value, EditorConfig& config)
{
    if (name == "indent_style" && (value == "tab" || value == "space"))
        config.usesTabs = value == "tab";
    else if (name == "indent_size")
        config.level = NumberIn(value, kWidest);
    else if (name == "tab_width")
        config.tabWidth = NumberIn(value, kWidest);
    else if (name == "max_line_length")
        config.longestLine = NumberIn(value, kLongestLine);
    else if (name == "end_of_line")
        config.ends = LineEndsIn(value);
    else if (name == "charset")
        config.encoding = EncodingIn(value);
    else if (name == "trim_trailing_whitespace")
        config.trimsBlanks = value == "true";
    else if (name == "insert_final_newline")
        config.endsLastLine = value == "true";
}

} // namespace

EditorConfig ReadEditorConfig(std::string_view output)
{
    EditorConfig config;
    while (!output.empty()) {
        const std::string_view line = output.substr(0, output.find('\n'));
        output.remove_prefix(std::min(line.size() + 1, output.size()));
        if (const size_t sign = line.find('='); sign != std::string_view::npos)
            Take(line.substr(0, sign), line.substr(sign + 1), config);
    }
    if (!config.level)
        config.level = config.tabWidth; // "indent_size = tab"
    return config;
}

base::Result<EditorConfig> EditorConfigFor(const std::string& path)
{
    const base::Result<bool> hasFile = HasFile(fs::path(path).parent_path());
    if (!hasFile)
        return hasFile.Failure();
    if (!*hasFile)
        return EditorConfig();
    const std::optional<std::string> program = base::FindProgram("editorconfig", "/");
    if (!program)
        return base::Error{"the program editorconfig is not installed, so .editorconfig files have no effect "
                           "(apt install editorconfig)"};
    const base::CancelToken never;
    const base::Result<std::string> output = base::OutputOf({*program, path}, kPatience, never);
    if (!output)
        return output.Failure();
    return ReadEditorConfig(*output);
}

} // namespace wren
