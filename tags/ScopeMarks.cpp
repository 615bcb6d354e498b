#include "tags/ScopeMarks.h"

#include "tags/NameAndQualifier.h"

#include <algorithm>

namespace {

// Hashes a text one character at a time.
class Hash {
public:
    void Begin() { value = kBasis; }
    void Add(char c) { value = (value ^ static_cast<unsigned char>(c)) * kPrime; }
    uint16_t Value() const { return static_cast<uint16_t>(value ^ value >> 16); }

private:
    static constexpr uint32_t kBasis = 2166136261u;
    static constexpr uint32_t kPrime = 16777619u;

    uint32_t value = kBasis;
};

uint32_t BitOf(uint16_t hash)
{
    return 1u << hash % 32;
}

} // namespace

ScopeMarks::Mark ScopeMarks::MarkOf(const char* scopes)
{
    Mark mark = {0, 0, 0};
    Hash hash;
    for (; *scopes != '\0'; ++scopes) {
        if (*scopes == '<') {
            if (mark.arguments == 0)
                mark.front = hash.Value();
            mark.arguments |= BitOf(hash.Value());
        }
        if (*scopes == ':')
            hash.Begin();
        else
            hash.Add(*scopes);
    }
    mark.whole = hash.Value();
    if (mark.arguments == 0)
        mark.front = mark.whole;
    return mark;
}

void ScopeMarks::Make(const std::vector<char*>& entries)
{
    marks.resize(entries.size());
    std::transform(entries.begin(), entries.end(), marks.begin(), [](const char* entry) {
        const char* name;
        const char* qualifier;
        NameAndQualifier::FromEntry(entry, name, qualifier);
        return MarkOf(qualifier);
    });
}

size_t ScopeMarks::Find(const std::string& qualifier, size_t first, size_t last) const
{
    const Mark wanted = MarkOf(qualifier.c_str());
    const auto mayMatch = [wanted, bit = BitOf(wanted.front)](Mark mark) {
        if (mark.front == wanted.front)
            return true;
        return wanted.arguments == 0 ? mark.whole == wanted.whole : (mark.arguments & bit) != 0;
    };
    const auto at = [this](size_t index) { return marks.begin() + static_cast<std::ptrdiff_t>(index); };
    return static_cast<size_t>(std::find_if(at(first), at(last), mayMatch) - marks.begin());
}
