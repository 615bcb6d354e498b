#include "tagsfile/TagLine.h"

#include <charconv>

namespace tagsfile {

namespace {

void AppendNumber(std::string& text, unsigned number)
{
    char digits[16];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

// With its line break, without its scope.
size_t LengthOfTagLine(const Tag& tag, std::string_view field)
{
    constexpr size_t kSigns = 7; // three tabs, ';', '"', the kind, the line break
    size_t digits = 1;
    for (unsigned rest = tag.line / 10; rest > 0; rest /= 10)
        ++digits;
    return tag.name.length() + field.length() + digits + kSigns;
}

} // namespace

bool HasRoomForScope(const Tag& tag, std::string_view field)
{
    return LengthOfTagLine(tag, field) + 1 + tag.scope.length() <= kLongestLine;
}

bool AppendTagLine(std::string& text, const Tag& tag, std::string_view field)
{
    if (LengthOfTagLine(tag, field) > kLongestLine)
        return false;
    text.append(tag.name) += '\t';
    text.append(field) += '\t';
    AppendNumber(text, tag.line);
    text.append(";\"\t") += tag.kind;
    if (!tag.scope.empty() && HasRoomForScope(tag, field))
        (text += '\t').append(tag.scope);
    text += '\n';
    return true;
}

} // namespace tagsfile
