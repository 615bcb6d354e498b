#include "cplustags/TagStore.h"

#include "cplustags/TagLine.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <unordered_map>

namespace cplustags {

namespace {

// Where texts are put one behind the other; they never move.
class TextPool {
public:
    const char* Put(std::string_view text)
    {
        if (text.length() > left) {
            left = std::max(kBlock, text.length());
            blocks.push_back(std::make_unique_for_overwrite<char[]>(left));
            end = blocks.back().get();
        }
        char* place = end;
        std::memcpy(place, text.data(), text.length());
        end += text.length();
        left -= text.length();
        return place;
    }

private:
    static constexpr size_t kBlock = 256 * 1024;

    std::vector<std::unique_ptr<char[]>> blocks;
    char* end = nullptr;
    size_t left = 0;
};

struct StoredTag {
    uint64_t key; // the name's first bytes, the first one highest: orders most names without looking at their texts
    const char* name;
    uint32_t file;
    uint32_t line;
    uint32_t scope;
    uint16_t nameLength;
    char kind;

    std::string_view Name() const { return {name, nameLength}; }
};

// A name that is shorter than the key is filled up with zeros, which no name contains and which sort below all it does.
uint64_t KeyOf(std::string_view name)
{
    uint64_t key = 0;
    for (size_t i = 0; i < sizeof key; ++i)
        key = key << 8 | (i < name.length() ? static_cast<unsigned char>(name[i]) : 0);
    return key;
}

// In a line a tab stands behind the field, and sorts above the first control characters.
bool FieldLess(const std::string& a, const std::string& b)
{
    const auto [inA, inB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    const unsigned char endOfA = inA == a.end() ? '\t' : *inA;
    const unsigned char endOfB = inB == b.end() ? '\t' : *inB;
    return endOfA < endOfB;
}

// Lines are compared as texts, and so are the numbers in them; ';' ends a number and sorts behind digits.
int CompareNumbers(uint32_t a, uint32_t b)
{
    constexpr size_t kLength = 11; // of ten digits and the end
    char textOfA[kLength] = {};
    char textOfB[kLength] = {};
    *std::to_chars(textOfA, textOfA + kLength - 1, a).ptr = ';';
    *std::to_chars(textOfB, textOfB + kLength - 1, b).ptr = ';';
    return std::memcmp(textOfA, textOfB, kLength);
}

} // namespace

struct TagStore::Contents {
    TextPool texts;
    std::vector<StoredTag> tags;
    std::vector<std::string_view> scopes = {""};
    std::unordered_map<std::string_view, uint32_t> knownScopes;

    // Before sorting: a scope that does not fit into its line is none, there as here.
    void DropLongScopes(const std::vector<std::string>& fields)
    {
        constexpr size_t kRest = 24; // tabs, the number, the kind
        for (StoredTag& tag : tags)
            if (tag.nameLength + fields[tag.file].length() + scopes[tag.scope].length() + kRest > kLongestLine) {
                std::string line;
                AppendTagLine(line, {tag.Name(), tag.line, tag.kind, scopes[tag.scope]}, fields[tag.file]);
                const size_t scopeStart = line.length() - std::min(line.length(), scopes[tag.scope].length() + 1);
                if (line.compare(scopeStart, scopes[tag.scope].length(), scopes[tag.scope]) != 0)
                    tag.scope = 0;
            }
    }

    uint32_t ScopeNumber(std::string_view scope)
    {
        if (scope.empty())
            return 0;
        if (const auto known = knownScopes.find(scope); known != knownScopes.end())
            return known->second;
        const std::string_view kept(texts.Put(scope), scope.length());
        scopes.push_back(kept);
        return knownScopes[kept] = static_cast<uint32_t>(scopes.size() - 1);
    }
};

TagStore::TagStore() : contents(std::make_unique<Contents>()) {}
TagStore::~TagStore() = default;
TagStore::TagStore(TagStore&&) noexcept = default;
TagStore& TagStore::operator=(TagStore&&) noexcept = default;

void TagStore::Add(unsigned file, const Tag& tag)
{
    // A longer name makes too long a line however it is written; what is kept of it still does.
    const std::string_view name = tag.name.substr(0, 2 * kLongestLine);
    // The tags of a name in overloads follow each other.
    std::vector<StoredTag>& tags = contents->tags;
    const bool again = !tags.empty() && tags.back().Name() == name;
    tags.push_back({KeyOf(name), again ? tags.back().name : contents->texts.Put(name), file, tag.line,
                    contents->ScopeNumber(tag.scope), static_cast<uint16_t>(name.length()), tag.kind});
}

size_t TagStore::Size() const
{
    return contents->tags.size();
}

void TagStore::Sort(const std::vector<std::string>& fields)
{
    // Comparing files' places in the order of files spares comparing their long, much alike names.
    std::vector<uint32_t> order(fields.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](uint32_t a, uint32_t b) { return FieldLess(fields[a], fields[b]); });
    std::vector<uint32_t> place(fields.size());
    for (uint32_t i = 0; i < order.size(); ++i)
        place[order[i]] = i > 0 && fields[order[i]] == fields[order[i - 1]] ? place[order[i - 1]] : i;

    contents->DropLongScopes(fields);
    const std::vector<std::string_view>& scopes = contents->scopes;
    std::sort(contents->tags.begin(), contents->tags.end(), [&](const StoredTag& a, const StoredTag& b) {
        if (a.key != b.key)
            return a.key < b.key;
        if (const int names = a.Name().compare(b.Name()); names != 0)
            return names < 0;
        if (place[a.file] != place[b.file])
            return place[a.file] < place[b.file];
        if (const int lines = CompareNumbers(a.line, b.line); lines != 0)
            return lines < 0;
        if (a.kind != b.kind)
            return static_cast<unsigned char>(a.kind) < static_cast<unsigned char>(b.kind);
        // Behind the kind stands a line break, or a tab, which sorts below it, and the scope.
        if (a.scope == b.scope || scopes[a.scope].empty() || scopes[b.scope].empty())
            return a.scope != b.scope && scopes[b.scope].empty();
        return scopes[a.scope] < scopes[b.scope];
    });
}

namespace {

class StoredLines : public LineSource {
public:
    StoredLines(const std::vector<StoredTag>& tags, const std::vector<std::string_view>& scopes,
                const std::vector<std::string>& fields, size_t* leftOut)
        : tags(tags), scopes(scopes), fields(fields), leftOut(leftOut)
    {
    }

    bool Next(std::string_view& line) override
    {
        for (; position < tags.size(); ++*leftOut) {
            const StoredTag& tag = tags[position++];
            text.clear();
            if (!AppendTagLine(text, {tag.Name(), tag.line, tag.kind, scopes[tag.scope]}, fields[tag.file]))
                continue;
            line = text;
            return true;
        }
        return false;
    }

private:
    const std::vector<StoredTag>& tags;
    const std::vector<std::string_view>& scopes;
    const std::vector<std::string>& fields;
    size_t* leftOut;
    size_t position = 0;
    std::string text;
};

} // namespace

std::unique_ptr<LineSource> TagStore::Lines(const std::vector<std::string>& fields, size_t* leftOut) const
{
    return std::make_unique<StoredLines>(contents->tags, contents->scopes, fields, leftOut);
}

} // namespace cplustags
