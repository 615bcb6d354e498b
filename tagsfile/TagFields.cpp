#include "tagsfile/TagFields.h"

#include <algorithm>

namespace tagsfile {

namespace {

// Removes the search pattern, from delimiter to delimiter, at the beginning; nullopt if there is none.
std::optional<std::string_view> AfterPattern(std::string_view text)
{
    if (text.empty() || (text.front() != '/' && text.front() != '?'))
        return std::nullopt;
    for (size_t i = 1; i < text.length(); ++i) {
        if (text[i] == '\\')
            ++i;
        else if (text[i] == text.front())
            return text.substr(i + 1);
    }
    return std::nullopt;
}

// Removes the line number, the pattern, or both with a ';' between them, at the beginning.
std::optional<std::string_view> AfterAddress(std::string_view text)
{
    const size_t digits = std::min(text.find_first_not_of("0123456789"), text.length());
    if (digits == 0)
        return AfterPattern(text);
    text.remove_prefix(digits);
    if (text.substr(0, 1) == ";")
        if (const auto rest = AfterPattern(text.substr(1)))
            return rest;
    return text;
}

bool IsBelow(std::string_view path, std::string_view directory)
{
    return path.length() > directory.length() + 1 && path.substr(0, directory.length()) == directory &&
           path[directory.length()] == '/';
}

} // namespace

std::string_view NameOfLine(std::string_view line)
{
    return line.substr(0, line.find('\t'));
}

std::optional<std::string_view> FieldOfLine(std::string_view line)
{
    const size_t name = line.find('\t');
    if (line.empty() || line.front() == '!' || name == std::string_view::npos || name == 0)
        return std::nullopt;
    const size_t end = line.find('\t', name + 1);
    if (end == std::string_view::npos || end == name + 1)
        return std::nullopt;
    return line.substr(name + 1, end - name - 1);
}

std::optional<std::string_view> AfterAddressOfLine(std::string_view line)
{
    const std::optional<std::string_view> field = FieldOfLine(line);
    if (!field)
        return std::nullopt;
    return AfterAddress(line.substr(NameOfLine(line).length() + field->length() + 2));
}

std::string PathOfField(std::string_view field, std::string_view directory)
{
    std::string path;
    if (field.empty() || field.front() != '/')
        path.append(directory) += '/';
    for (size_t i = 0; i < field.length(); ++i) {
        if (field[i] == '\\' && i + 1 < field.length())
            ++i;
        path += field[i];
    }
    return path;
}

std::optional<std::string> FileField(std::string_view path, std::string_view directory)
{
    if (IsBelow(path, directory))
        path.remove_prefix(directory.length() + 1);
    std::string field;
    for (const char character : path) {
        if (character == '\t' || character == '\n' || character == '\r')
            return std::nullopt;
        if (character == '\\')
            field += '\\';
        field += character;
    }
    return field;
}

} // namespace tagsfile
