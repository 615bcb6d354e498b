#include "tagging/ctags/CtagsOutput.h"

#include "tagsfile/TagLine.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <unordered_map>
#include <unordered_set>
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

constexpr std::string_view kSeparator = "::";
constexpr std::string_view kClassWord = tagsfile::KindOf(tagsfile::kind::kClass).scopeWord;

struct RawTag {
    std::string_view name;
    unsigned line = 0;
    char kind = 0;
    std::string_view scopeKind; // "class"
    std::string_view scope;     // "Outer::Inner"
    std::string_view whole;     // "class:Outer::Inner"
    bool scopedEnumeration = false;
};

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

// ctags' names for unnamed declarations: the file in eight digits, a number and the kind in two or more each.
bool IsAnonymous(std::string_view name)
{
    constexpr std::string_view kBeginning = "__anon";
    constexpr size_t kFewestDigits = 12;
    return name.substr(0, kBeginning.length()) == kBeginning && name.length() >= kBeginning.length() + kFewestDigits &&
           std::all_of(name.begin() + kBeginning.length(), name.end(), IsHexadecimal);
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

bool FitsInLine(std::string_view text)
{
    return text.length() < tagsfile::kLongestLine && text.find_first_of("\t\n\r") == std::string_view::npos;
}

bool HasWord(std::string_view list, std::string_view word)
{
    while (!list.empty())
        if (CutField(list, ',') == word)
            return true;
    return false;
}

// The scope precedes the fields of certain languages. A scope without a name is the remainder of a truncated line.
void ReadField(std::string_view field, RawTag& tag)
{
    const std::string_view whole = field;
    const std::string_view key = CutField(field, ':');
    if (key == "properties") {
        tag.scopedEnumeration = HasWord(field, "scopedenum");
    } else if (tag.whole.empty() && !field.empty() && FitsInLine(field)) {
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

// Readers would skip or misread a line whose name begins with '!'.
bool IsUsable(std::string_view name)
{
    return !name.empty() && name.front() != '!' && name.find_first_of("\t\n\r") == std::string_view::npos &&
           !IsAnonymous(name);
}

// Any other character, such as a carriage return in a truncated line, would make the tag's line unreadable.
bool IsKind(std::string_view text)
{
    return text.length() == 1 && std::isalpha(static_cast<unsigned char>(text.front())) != 0;
}

std::optional<RawTag> ReadLine(std::string_view line, tagsfile::Tags& keeper)
{
    RawTag tag;
    tag.name = Plain(CutField(line), keeper);
    CutField(line); // the file
    const bool hasNumber = ReadLineNumber(CutField(line), tag.line);
    const std::string_view kind = CutField(line);
    if (!hasNumber || !IsKind(kind) || !IsUsable(tag.name))
        return std::nullopt;
    tag.kind = kind.front();
    while (!line.empty())
        ReadField(Plain(CutField(line), keeper), tag);
    return tag;
}

// The "::" before the last part; template arguments may contain others.
size_t LastSeparator(std::string_view scope)
{
    int depth = 0;
    for (size_t i = scope.length(); i-- > 1;) {
        if (scope[i] == '>')
            ++depth;
        else if (scope[i] == '<')
            --depth;
        else if (depth == 0 && scope.substr(i - 1, 2) == kSeparator)
            return i - 1;
    }
    return std::string_view::npos;
}

std::string_view Outer(std::string_view scope)
{
    const size_t separator = LastSeparator(scope);
    return separator == std::string_view::npos ? std::string_view() : scope.substr(0, separator);
}

std::string Joined(std::string_view outer, std::string_view name)
{
    std::string joined(outer);
    if (!joined.empty())
        joined += kSeparator;
    return joined += name;
}

bool MayHaveAnonymousParts(std::string_view scope)
{
    return scope.find("__anon") != std::string_view::npos;
}

std::string WithoutAnonymousParts(std::string_view scope)
{
    if (!MayHaveAnonymousParts(scope))
        return std::string(scope);
    const size_t separator = LastSeparator(scope);
    const std::string_view last = separator == std::string_view::npos ? scope : scope.substr(separator + 2);
    std::string outer = WithoutAnonymousParts(Outer(scope));
    return IsAnonymous(last) ? outer : Joined(outer, last);
}

// "" for kinds of scopes that lookups do not know.
std::string_view ScopeToken(std::string_view kind)
{
    for (const std::string_view token : tagsfile::kScopeWords)
        if (token.substr(0, token.length() - 1) == kind)
            return token;
    return "";
}

// The scopes of one file's tags, in the form for lookups.
class Scopes {
public:
    explicit Scopes(const std::vector<RawTag>& tags)
    {
        const bool hasEnumerators = std::any_of(tags.begin(), tags.end(), [](const RawTag& tag) {
            return tag.kind == tagsfile::kind::kEnumerator && tag.scopeKind == "enum";
        });
        if (hasEnumerators)
            for (const RawTag& tag : tags)
                Remember(tag);
    }

    std::string_view Of(const RawTag& tag, tagsfile::Tags& keeper) const
    {
        if (tag.kind == tagsfile::kind::kEnumerator && tag.scopeKind == "enum")
            return OfEnumerator(tag.scope, keeper);
        const std::string_view token = ScopeToken(tag.scopeKind);
        if (token.empty() || !MayHaveAnonymousParts(tag.scope))
            return token.empty() ? token : tag.whole;
        return Kept(token, WithoutAnonymousParts(tag.scope), keeper);
    }

private:
    void Remember(const RawTag& tag)
    {
        if (tag.kind == tagsfile::kind::kEnumeration && tag.scopedEnumeration)
            scopedEnumerations.insert(Joined(tag.scope, tag.name));
        else if (const std::string_view token = tagsfile::KindOf(tag.kind).scopeWord; !token.empty())
            tokens[Joined(WithoutAnonymousParts(tag.scope), tag.name)] = token;
        else if (tag.kind == tagsfile::kind::kFunction)
            tokens.emplace(Joined(WithoutAnonymousParts(tag.scope), tag.name), kNoToken);
    }

    // An enumerator belongs to its enumeration only if that is scoped, else to the scope around it.
    std::string_view OfEnumerator(std::string_view enumeration, tagsfile::Tags& keeper) const
    {
        if (scopedEnumerations.count(std::string(enumeration)) != 0)
            return Kept(kClassWord, WithoutAnonymousParts(enumeration), keeper);
        const std::string around = WithoutAnonymousParts(Outer(enumeration));
        const auto token = tokens.find(around);
        return Kept(token == tokens.end() ? kClassWord : token->second, around, keeper);
    }

    static std::string_view Kept(std::string_view token, std::string_view scope, tagsfile::Tags& keeper)
    {
        if (token.empty() || scope.empty())
            return "";
        return keeper.Keep(std::string(token).append(scope));
    }

    static constexpr std::string_view kNoToken = ""; // declarations in a function have no scope

    std::unordered_set<std::string> scopedEnumerations; // with their scopes, as written by ctags
    std::unordered_map<std::string, std::string_view> tokens;
};

} // namespace

tagsfile::Tags ReadCtagsOutput(std::string_view output)
{
    tagsfile::Tags result;
    std::vector<RawTag> read;
    while (!output.empty())
        if (const std::optional<RawTag> tag = ReadLine(CutField(output, '\n'), result))
            read.push_back(*tag);
    const Scopes scopes(read);
    result.tags.reserve(read.size());
    for (const RawTag& tag : read)
        result.tags.push_back({tag.name, tag.line, tag.kind, scopes.Of(tag, result)});
    return result;
}

} // namespace tagging
