#include "tagging/ctags/LookupTags.h"

#include "tagsfile/TagLine.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <unordered_map>
#include <unordered_set>

namespace tagging {

namespace {

constexpr std::string_view kSeparator = "::";
constexpr std::string_view kClassWord = tagsfile::KindOf(tagsfile::kind::kClass).scopeWord;

// ctags' names for unnamed declarations: the file in eight digits, a number and the kind in two or more each.
bool IsAnonymous(std::string_view name)
{
    constexpr std::string_view kBeginning = "__anon";
    constexpr size_t kFewestDigits = 12;
    return name.substr(0, kBeginning.length()) == kBeginning && name.length() >= kBeginning.length() + kFewestDigits &&
           std::all_of(name.begin() + kBeginning.length(), name.end(),
                       [](unsigned char character) { return std::isxdigit(character) != 0; });
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
    explicit Scopes(std::span<const DeclaredTag> tags)
    {
        const bool hasEnumerators = std::any_of(tags.begin(), tags.end(), [](const DeclaredTag& tag) {
            return tag.kind == tagsfile::kind::kEnumerator && tag.scopeKind == "enum";
        });
        if (hasEnumerators)
            for (const DeclaredTag& tag : tags)
                Remember(tag);
    }

    std::string_view Of(const DeclaredTag& tag, tagsfile::Tags& keeper) const
    {
        if (tag.kind == tagsfile::kind::kEnumerator && tag.scopeKind == "enum")
            return OfEnumerator(tag.scope, keeper);
        const std::string_view token = ScopeToken(tag.scopeKind);
        if (token.empty())
            return token;
        if (!tag.whole.empty() && !MayHaveAnonymousParts(tag.scope))
            return tag.whole;
        return Kept(token, WithoutAnonymousParts(tag.scope), keeper);
    }

private:
    void Remember(const DeclaredTag& tag)
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

bool CanBeTag(std::string_view name)
{
    return !name.empty() && name.front() != '!' && name.find_first_of("\t\n\r") == std::string_view::npos &&
           !IsAnonymous(name);
}

bool CanBeScope(std::string_view text)
{
    return text.length() < tagsfile::kLongestLine && text.find_first_of("\t\n\r") == std::string_view::npos;
}

void AddLookupTags(std::span<const DeclaredTag> declared, tagsfile::Tags& result)
{
    const Scopes scopes(declared);
    result.tags.reserve(result.tags.size() + declared.size());
    for (const DeclaredTag& tag : declared)
        result.tags.push_back({tag.name, tag.line, tag.kind, scopes.Of(tag, result)});
}

} // namespace tagging
