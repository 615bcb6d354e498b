#include "tagging/ctags/CtagsOutput.h"

#include "tagging/ctags/LookupTags.h"

#include <cctype>
#include <charconv>
#include <optional>
#include <utility>

namespace tagging {

std::vector<std::string> OptionsForOutput()
{
    return {"--options=NONE",
            "--sort=no",
            "--excmd=number",
            "--fields=ks",
            "--fields-C++=+{properties}", // tells scoped enumerations from others
            "--extras=-{anonymous}",
            "--languages=-ObjectiveC,-MatLab"};
}

namespace {

// Cuts the text before the delimiter off the front; the rest is empty if there is no delimiter.
std::string_view CutField(std::string_view& rest, char delimiter = '\t')
{
    const size_t end = rest.find(delimiter);
    const std::string_view field = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.length() : end + 1);
    return field;
}

bool IsHexadecimal(char character)
{
    return std::isxdigit(static_cast<unsigned char>(character)) != 0;
}

// The character of an escape and the escape's length, without the backslash.
std::pair<char, size_t> EscapedCharacter(std::string_view escape)
{
    constexpr std::string_view kLetters = "abtnvfr";
    constexpr std::string_view kMeanings = "\a\b\t\n\v\f\r";
    if (escape.length() >= 3 && escape[0] == 'x' && IsHexadecimal(escape[1]) && IsHexadecimal(escape[2])) {
        unsigned char code = 0;
        std::from_chars(escape.data() + 1, escape.data() + 3, code, 16);
        return {static_cast<char>(code), 3};
    }
    const size_t letter = kLetters.find(escape[0]);
    return {letter == std::string_view::npos ? escape[0] : kMeanings[letter], 1};
}

// Names and scopes as in the source: ctags escapes backslashes, control characters and a leading '!', but lookups do
// not.
std::string_view Plain(std::string_view text, tagsfile::Tags& keeper)
{
    if (text.find('\\') == std::string_view::npos)
        return text;
    std::string plain;
    for (size_t i = 0; i < text.length(); ++i) {
        if (text[i] != '\\' || i + 1 == text.length()) {
            plain += text[i];
            continue;
        }
        const auto [character, length] = EscapedCharacter(text.substr(i + 1));
        plain += character;
        i += length;
    }
    return keeper.Keep(std::move(plain));
}

bool HasWord(std::string_view list, std::string_view word)
{
    while (!list.empty())
        if (CutField(list, ',') == word)
            return true;
    return false;
}

// The scope precedes the fields of certain languages. A scope without a name is the remainder of a truncated line.
void ReadField(std::string_view field, DeclaredTag& tag)
{
    const std::string_view whole = field;
    const std::string_view key = CutField(field, ':');
    if (key == "properties") {
        tag.scopedEnumeration = HasWord(field, "scopedenum");
    } else if (tag.whole.empty() && !field.empty() && CanBeScope(field)) {
        tag.scopeKind = key;
        tag.scope = field;
        tag.whole = whole;
    }
}

bool ReadLineNumber(std::string_view address, unsigned& line)
{
    const char* const end = address.data() + address.length();
    const auto [rest, problem] = std::from_chars(address.data(), end, line);
    return problem == std::errc() && std::string_view(rest, end - rest) == ";\"";
}

// Any other character, such as a carriage return in a truncated line, would make the tag's line unreadable.
bool IsKind(std::string_view text)
{
    return text.length() == 1 && std::isalpha(static_cast<unsigned char>(text.front())) != 0;
}

std::optional<DeclaredTag> ReadLine(std::string_view line, tagsfile::Tags& keeper)
{
    DeclaredTag tag;
    tag.name = Plain(CutField(line), keeper);
    CutField(line); // the file
    const bool hasNumber = ReadLineNumber(CutField(line), tag.line);
    const std::string_view kind = CutField(line);
    if (!hasNumber || !IsKind(kind) || !CanBeTag(tag.name))
        return std::nullopt;
    tag.kind = kind.front();
    while (!line.empty())
        ReadField(Plain(CutField(line), keeper), tag);
    return tag;
}

} // namespace

tagsfile::Tags ReadCtagsOutput(std::string_view output)
{
    tagsfile::Tags result;
    std::vector<DeclaredTag> read;
    while (!output.empty())
        if (const std::optional<DeclaredTag> tag = ReadLine(CutField(output, '\n'), result))
            read.push_back(*tag);
    AddLookupTags(read, result);
    return result;
}

} // namespace tagging
