#include "cplustags/CtagsOutput.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace cplustags {

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

constexpr char kEnumerator = 'e';
constexpr char kEnumeration = 'g';
constexpr std::string_view kSeparator = "::";

struct RawTag {
    std::string_view name;
    unsigned line;
    char kind;
    std::string_view scopeKind; // "class"
    std::string_view scope;     // "Outer::Inner"
    std::string_view whole;     // "class:Outer::Inner"
    bool scopedEnumeration = false;
};

// Takes the text up to the delimiter off the front; what is left is empty when there is none.
std::string_view CutField(std::string_view& rest, char delimiter = '\t')
{
    const size_t end = rest.find(delimiter);
    const std::string_view field = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.length() : end + 1);
    return field;
}

bool IsAnonymous(std::string_view name)
{
    constexpr std::string_view kBeginning = "__anon";
    return name.substr(0, kBeginning.length()) == kBeginning && name.length() > kBeginning.length() &&
           std::all_of(name.begin() + kBeginning.length(), name.end(),
                       [](unsigned char character) { return std::isxdigit(character) != 0; });
}

bool HasWord(std::string_view list, std::string_view word)
{
    while (!list.empty())
        if (CutField(list, ',') == word)
            return true;
    return false;
}

void ReadField(std::string_view field, RawTag& tag)
{
    const std::string_view whole = field;
    const std::string_view key = CutField(field, ':');
    if (key == "properties") {
        tag.scopedEnumeration = HasWord(field, "scopedenum");
        return;
    }
    tag.scopeKind = key;
    tag.scope = field;
    tag.whole = whole;
}

std::optional<RawTag> ReadLine(std::string_view line)
{
    RawTag tag;
    tag.name = CutField(line);
    CutField(line); // the file
    const std::string_view number = CutField(line);
    const auto [end, problem] = std::from_chars(number.data(), number.data() + number.length(), tag.line);
    const std::string_view kind = CutField(line);
    if (tag.name.empty() || problem != std::errc() || std::string_view(end, number.end() - end) != ";\"" ||
        kind.length() != 1 || IsAnonymous(tag.name))
        return std::nullopt;
    tag.kind = kind.front();
    while (!line.empty())
        ReadField(CutField(line), tag);
    return tag;
}

// Where the "::" stands in front of the last part; template arguments may hold others.
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

std::string WithoutAnonymousParts(std::string_view scope)
{
    if (scope.empty())
        return "";
    const size_t separator = LastSeparator(scope);
    const std::string_view last = separator == std::string_view::npos ? scope : scope.substr(separator + 2);
    std::string outer = WithoutAnonymousParts(Outer(scope));
    return IsAnonymous(last) ? outer : Joined(outer, last);
}

// "" for a kind of scope that lookups do not know.
std::string_view ScopeToken(std::string_view kind)
{
    for (const std::string_view token : {"class:", "namespace:", "struct:", "union:"})
        if (token.substr(0, token.length() - 1) == kind)
            return token;
    return "";
}

std::string_view ScopeToken(char tagKind)
{
    switch (tagKind) {
    case 'c':
        return "class:";
    case 'n':
        return "namespace:";
    case 's':
        return "struct:";
    case 'u':
        return "union:";
    default:
        return "";
    }
}

// The scopes of one file's tags, as lookups are to read them.
class Scopes {
public:
    explicit Scopes(const std::vector<RawTag>& tags)
    {
        const bool hasEnumerators = std::any_of(tags.begin(), tags.end(), [](const RawTag& tag) {
            return tag.kind == kEnumerator && tag.scopeKind == "enum";
        });
        if (hasEnumerators)
            for (const RawTag& tag : tags)
                Remember(tag);
    }

    std::string_view Of(const RawTag& tag, Tags& keeper) const
    {
        if (tag.kind == kEnumerator && tag.scopeKind == "enum")
            return OfEnumerator(tag.scope, keeper);
        const std::string_view token = ScopeToken(tag.scopeKind);
        if (token.empty() || tag.scope.find("__anon") == std::string_view::npos)
            return token.empty() ? token : tag.whole;
        return Kept(token, tag.scope, keeper);
    }

private:
    void Remember(const RawTag& tag)
    {
        if (tag.kind == kEnumeration && tag.scopedEnumeration)
            scopedEnumerations.insert(Joined(tag.scope, tag.name));
        else if (const std::string_view token = ScopeToken(tag.kind); !token.empty())
            tokens.emplace(Joined(tag.scope, tag.name), token);
    }

    // Enumerators are used by the enumeration's name where that is a scoped one, else as if they stood beside it.
    std::string_view OfEnumerator(std::string_view enumeration, Tags& keeper) const
    {
        if (scopedEnumerations.count(std::string(enumeration)) != 0)
            return Kept("class:", enumeration, keeper);
        const std::string_view around = Outer(enumeration);
        const auto token = tokens.find(std::string(around));
        return Kept(token == tokens.end() ? "class:" : token->second, around, keeper);
    }

    static std::string_view Kept(std::string_view token, std::string_view scope, Tags& keeper)
    {
        const std::string known = WithoutAnonymousParts(scope);
        return known.empty() ? std::string_view() : keeper.Keep(std::string(token) + known);
    }

    std::unordered_set<std::string> scopedEnumerations; // with their scopes, as ctags writes them
    std::unordered_map<std::string, std::string_view> tokens;
};

} // namespace

Tags ReadCtagsOutput(std::string_view output)
{
    std::vector<RawTag> read;
    while (!output.empty())
        if (const std::optional<RawTag> tag = ReadLine(CutField(output, '\n')))
            read.push_back(*tag);
    const Scopes scopes(read);
    Tags result;
    result.tags.reserve(read.size());
    for (const RawTag& tag : read)
        result.tags.push_back({tag.name, tag.line, tag.kind, scopes.Of(tag, result)});
    return result;
}

} // namespace cplustags
