#include "wren/core/TagsCount.h"

#include <charconv>
#include <fstream>
#include <optional>
#include <string_view>
#include <unordered_set>

namespace wren {

namespace {

constexpr std::string_view kPseudoTag = "!_TAG_";
constexpr std::string_view kFiles = "!_TAG_CPLUSTAGS_FILES\t";
constexpr std::string_view kTags = "!_TAG_CPLUSTAGS_TAGS\t";

std::optional<long> NumberBehind(std::string_view prefix, std::string_view line)
{
    if (!line.starts_with(prefix))
        return std::nullopt;
    long number = 0;
    const auto [end, problem] = std::from_chars(line.begin() + prefix.size(), line.end(), number);
    return problem == std::errc() && number >= 0 ? std::optional(number) : std::nullopt;
}

std::string FieldOfLine(const std::string& line)
{
    const size_t start = line.find('\t');
    return start == std::string::npos ? "" : line.substr(start + 1, line.find('\t', start + 1) - start - 1);
}

} // namespace

TagsCount CountTags(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::optional<long> files;
    std::optional<long> tags;
    std::unordered_set<std::string> fields;
    TagsCount counted;
    for (std::string line; !(files && tags) && std::getline(stream, line);) {
        if (const auto number = NumberBehind(kFiles, line))
            files = number;
        else if (const auto other = NumberBehind(kTags, line))
            tags = other;
        else if (!line.starts_with(kPseudoTag)) {
            ++counted.tags;
            fields.insert(FieldOfLine(line));
        }
    }
    counted.files = static_cast<long>(fields.size());
    return {files.value_or(counted.files), tags.value_or(counted.tags)};
}

} // namespace wren
