#include "wren/core/TagsLine.h"

#include "vetch/support/ShellEscape.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string_view>

namespace wren {

namespace {

constexpr std::string_view kMove = "mv ";
constexpr std::string_view kTarget = " -f "; // settings stand before it; a " -f " in them does not count
constexpr std::string_view kAppend = " --append=yes";
constexpr std::string_view kBlanks = " \t\n";

// The first word, split like a shell: blanks behind a backslash or in single quotes belong to it.
std::string TakeWord(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    size_t end = 0;
    for (bool quoted = false; end < text.size() && (quoted || kBlanks.find(text[end]) == kBlanks.npos); ++end) {
        if (text[end] == '\'')
            quoted = !quoted;
        else if (text[end] == '\\' && !quoted && end + 1 < text.size())
            ++end;
    }
    std::string word(text.substr(0, end));
    text.remove_prefix(end);
    return word;
}

std::string TakePath(std::string_view& text, const std::string& home)
{
    const std::string path = DeEscaped(TakeWord(text));
    return path.starts_with("~/") ? home + path.substr(home.ends_with('/') ? 2 : 1) : path;
}

std::string WithoutSuffix(const std::string& unfinished)
{
    for (const char* suffix : {".tmp", ".temp"})
        if (unfinished.ends_with(suffix))
            return unfinished.substr(0, unfinished.size() - std::string_view(suffix).size());
    return "";
}

bool IsPlain(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) || std::string_view("_./-+").find(c) != std::string_view::npos;
}

} // namespace

std::optional<TagsLine> ReadTagsLine(const std::string& command, const std::string& home)
{
    TagsLine line;
    std::string_view rest = command;
    if (rest.starts_with(kMove)) {
        rest.remove_prefix(kMove.size());
        line.kind = TagsLine::Kind::Move;
        line.unfinished = TakePath(rest, home);
        line.file = TakePath(rest, home);
    } else {
        const size_t target = rest.rfind(kTarget);
        if (target == std::string_view::npos)
            return std::nullopt;
        rest.remove_prefix(target + kTarget.size());
        line.unfinished = TakePath(rest, home);
        line.file = WithoutSuffix(line.unfinished);
        line.kind = rest.find(kAppend) != std::string_view::npos ? TagsLine::Kind::Append : TagsLine::Kind::Make;
    }
    if (!line.unfinished.starts_with('/') || line.file.empty() || line.file != WithoutSuffix(line.unfinished))
        return std::nullopt;
    return line;
}

bool AppendsNothing(const std::string& command)
{
    constexpr std::string_view kFind = "find ";
    if (!command.starts_with(kFind) || command.find(kAppend) == std::string::npos)
        return false;
    const auto start = command.begin() + kFind.size();
    const auto end = std::find_if_not(start, command.end(), IsPlain);
    std::error_code unknown;
    return std::string_view(end, command.end()).starts_with(" | ") &&
           !std::filesystem::exists(std::filesystem::symlink_status(std::string(start, end), unknown));
}

} // namespace wren
