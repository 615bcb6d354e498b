#include "wren/symbols/Comments.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace wren {

namespace {

constexpr unsigned kMostLines = 100;

std::string_view WithoutBlanks(std::string_view text)
{
    const size_t start = text.find_first_not_of(" \t\f\r");
    if (start == std::string_view::npos)
        return "";
    return text.substr(start, text.find_last_not_of(" \t\f\r") + 1 - start);
}

// "/// text", "//!< text", " * text", "/** text */"
std::string_view WithoutSigns(std::string_view line)
{
    line = WithoutBlanks(line);
    if (line.ends_with("*/"))
        line = WithoutBlanks(line.substr(0, line.size() - 2));
    for (const std::string_view sign : {"//", "/*", "*"})
        if (line.starts_with(sign)) {
            line.remove_prefix(sign.size());
            line.remove_prefix(
                std::min(line.find_first_not_of(sign[0] == '/' && sign[1] == '/' ? "/!<" : "*!<"), line.size()));
            break;
        }
    return WithoutBlanks(line);
}

std::string Joined(const std::vector<std::string_view>& lines)
{
    std::string text;
    for (const std::string_view line : lines)
        text += std::string(WithoutSigns(line)) + "\n";
    const size_t start = std::min(text.find_first_not_of('\n'), text.size());
    const size_t end = text.find_last_not_of('\n');
    return end == std::string::npos ? "" : text.substr(start, end + 1 - start);
}

// The lines of a comment that ends in the line before.
std::vector<std::string_view> LinesBefore(const SourceText& text, unsigned line)
{
    std::vector<std::string_view> lines;
    const auto at = [&](unsigned number) { return WithoutBlanks(text.Line(number)); };
    unsigned first = line;
    if (line > 1 && at(line - 1).ends_with("*/")) {
        do
            --first;
        while (first > 1 && line - first < kMostLines && at(first).find("/*") == std::string_view::npos);
        if (!at(first).starts_with("/*"))
            return {}; // behind something else, or too long
    } else {
        while (first > 1 && line - first < kMostLines && at(first - 1).starts_with("//"))
            --first;
    }
    for (unsigned number = first; number < line; ++number)
        lines.push_back(text.Line(number));
    return lines;
}

std::string Before(size_t start, const SourceText& text)
{
    const unsigned line = text.LineAt(start);
    const size_t lineStart = text.LineStart(line);
    const std::string_view before = text.Content().substr(lineStart, start - lineStart);
    return WithoutBlanks(before).empty() ? Joined(LinesBefore(text, line)) : "";
}

std::string Behind(size_t end, const SourceText& text)
{
    const unsigned line = text.LineAt(end);
    std::string_view rest = text.Line(line);
    rest.remove_prefix(std::min(end - text.LineStart(line), rest.size()));
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t,;)}"), rest.size()));
    if (!rest.starts_with("//") && !rest.starts_with("/*"))
        return "";
    if (rest.starts_with("/*") && rest.find("*/") != std::string_view::npos)
        rest = rest.substr(0, rest.find("*/") + 2);
    return Joined({rest});
}

} // namespace

std::string CommentOf(const DeclarationRange& declaration, const SourceText& text)
{
    std::string before = Before(declaration.start, text);
    return before.empty() ? Behind(declaration.end, text) : before;
}

} // namespace wren
