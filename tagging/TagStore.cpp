#include "tagging/TagStore.h"

#include "base/TextPool.h"
#include "tagsfile/TagLine.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <unordered_map>

namespace tagging {

namespace {

struct StoredTag {
    uint64_t key; // the name's first bytes, most significant first: orders most names without comparing texts
    const char* name;
    uint32_t file;
    uint32_t line;
    uint32_t scope;
    uint16_t nameLength;
    char kind;

    std::string_view Name() const { return {name, nameLength}; }
};

// A name shorter than the key is padded with the tab that follows it in a line.
uint64_t KeyOf(std::string_view name)
{
    uint64_t key = 0;
    for (size_t i = 0; i < sizeof key; ++i)
        key = key << 8 | static_cast<unsigned char>(i < name.length() ? name[i] : '\t');
    return key;
}

// Compares as if the given character followed each text: it sorts above some control characters.
int Compare(std::string_view a, std::string_view b, char end)
{
    const size_t common = std::min(a.length(), b.length());
    if (const int difference = a.substr(0, common).compare(b.substr(0, common)); difference != 0)
        return difference;
    const auto after = [=](std::string_view text) -> unsigned char {
        return common < text.length() ? text[common] : end;
    };
    return static_cast<int>(after(a)) - static_cast<int>(after(b));
}

// Lines are compared as texts, and so are their numbers; ';' ends a number and sorts after digits.
int CompareNumbers(uint32_t a, uint32_t b)
{
    constexpr size_t kLength = 11; // ten digits and the end
    char textOfA[kLength] = {};
    char textOfB[kLength] = {};
    *std::to_chars(textOfA, textOfA + kLength - 1, a).ptr = ';';
    *std::to_chars(textOfB, textOfB + kLength - 1, b).ptr = ';';
    return std::memcmp(textOfA, textOfB, kLength);
}

} // namespace

struct TagStore::Contents {
    base::TextPool texts;
    std::vector<StoredTag> tags;
    std::vector<std::string_view> scopes = {""};
    std::unordered_map<std::string_view, uint32_t> knownScopes;

    tagsfile::Tag TagOf(const StoredTag& tag) const { return {tag.Name(), tag.line, tag.kind, scopes[tag.scope]}; }

    // Called before sorting: a scope that does not fit into its line counts as none in the order too.
    void DropLongScopes(const std::vector<std::string>& fields)
    {
        for (StoredTag& tag : tags)
            if (tag.scope != 0 && !tagsfile::HasRoomForScope(TagOf(tag), fields[tag.file]))
                tag.scope = 0;
    }

    uint32_t ScopeNumber(std::string_view scope)
    {
        if (scope.empty())
            return 0;
        if (const auto known = knownScopes.find(scope); known != knownScopes.end())
            return known->second;
        const std::string_view kept = texts.Put(scope);
        scopes.push_back(kept);
        return knownScopes[kept] = static_cast<uint32_t>(scopes.size() - 1);
    }
};

TagStore::TagStore() : contents(std::make_unique<Contents>()) {}
TagStore::~TagStore() = default;
TagStore::TagStore(TagStore&&) noexcept = default;
TagStore& TagStore::operator=(TagStore&&) noexcept = default;

void TagStore::Add(unsigned file, const tagsfile::Tag& tag)
{
    // The line of a longer name is too long in any case, and so is that of the part kept.
    const std::string_view name = tag.name.substr(0, 2 * tagsfile::kLongestLine);
    // Overloads of a name follow each other.
    std::vector<StoredTag>& tags = contents->tags;
    const bool again = !tags.empty() && tags.back().Name() == name;
    tags.push_back({KeyOf(name), again ? tags.back().name : contents->texts.Put(name).data(), file, tag.line,
                    contents->ScopeNumber(tag.scope), static_cast<uint16_t>(name.length()), tag.kind});
}

size_t TagStore::Size() const
{
    return contents->tags.size();
}

namespace {

// The rank of each field in sorted order: avoids comparing long and similar file names.
std::vector<uint32_t> Places(const std::vector<std::string>& fields)
{
    std::vector<uint32_t> order(fields.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(),
              [&](uint32_t a, uint32_t b) { return Compare(fields[a], fields[b], '\t') < 0; });
    std::vector<uint32_t> places(fields.size());
    for (uint32_t i = 0; i < order.size(); ++i)
        places[order[i]] = i > 0 && fields[order[i]] == fields[order[i - 1]] ? places[order[i - 1]] : i;
    return places;
}

// Orders tags by the bytes of their lines.
class LineOrder {
public:
    LineOrder(const std::vector<uint32_t>& places, const std::vector<std::string_view>& scopes)
        : places(places), scopes(scopes)
    {
    }

    bool operator()(const StoredTag& a, const StoredTag& b) const
    {
        if (a.key != b.key)
            return a.key < b.key;
        if (const int names = a.name == b.name ? 0 : Compare(a.Name(), b.Name(), '\t'); names != 0)
            return names < 0;
        if (places[a.file] != places[b.file])
            return places[a.file] < places[b.file];
        if (const int lines = a.line == b.line ? 0 : CompareNumbers(a.line, b.line); lines != 0)
            return lines < 0;
        if (a.kind != b.kind)
            return static_cast<unsigned char>(a.kind) < static_cast<unsigned char>(b.kind);
        // The kind is followed by a line break, or by a tab, which sorts before it, and the scope.
        if (a.scope == b.scope || a.scope == 0 || b.scope == 0)
            return a.scope != b.scope && b.scope == 0;
        return Compare(scopes[a.scope], scopes[b.scope], '\n') < 0;
    }

private:
    const std::vector<uint32_t>& places;
    const std::vector<std::string_view>& scopes;
};

} // namespace

void TagStore::Sort(const std::vector<std::string>& fields)
{
    contents->DropLongScopes(fields);
    std::sort(contents->tags.begin(), contents->tags.end(), LineOrder(Places(fields), contents->scopes));
}

namespace {

class StoredLines : public tagsfile::LineSource {
public:
    StoredLines(const std::vector<StoredTag>& tags, const std::vector<std::string_view>& scopes,
                const std::vector<std::string>& fields, TagsByFile* leftOut)
        : tags(tags), scopes(scopes), fields(fields), leftOut(leftOut)
    {
    }

    bool Next(std::string_view& line) override
    {
        while (position < tags.size()) {
            const StoredTag& tag = tags[position++];
            text.clear();
            if (tagsfile::AppendTagLine(text, {tag.Name(), tag.line, tag.kind, scopes[tag.scope]}, fields[tag.file])) {
                line = text;
                return true;
            }
            ++(*leftOut)[tag.file];
        }
        return false;
    }

private:
    const std::vector<StoredTag>& tags;
    const std::vector<std::string_view>& scopes;
    const std::vector<std::string>& fields;
    TagsByFile* leftOut;
    size_t position = 0;
    std::string text;
};

} // namespace

std::unique_ptr<tagsfile::LineSource> TagStore::Lines(const std::vector<std::string>& fields, TagsByFile* leftOut) const
{
    return std::make_unique<StoredLines>(contents->tags, contents->scopes, fields, leftOut);
}

} // namespace tagging
