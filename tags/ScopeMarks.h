// Excludes most entries outside a scope without reading their texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Thousands of names may begin alike, and their scopes are scattered over the memory: to read them all takes longer
// than a key stroke may. The marks are contiguous. They exclude only entries that NameAndQualifier::MatchQualifier
// rejects.
class ScopeMarks {
public:
    // Replaces all marks by those of the entries, which have NameAndQualifier's form.
    void Make(const std::vector<char*>& entries);

    // The first entry in [first, last) that may match the qualifier of a pattern, which is not empty; 'last' without
    // one. Indices of the entries given to Make().
    size_t Find(const std::string& qualifier, size_t first, size_t last) const;

private:
    // Scopes that match each other have the same text behind the last colon, up to template arguments. These are not
    // compared, and may stand anywhere.
    struct Mark {
        uint16_t whole;     // hash of the text behind the last colon
        uint16_t front;     // hash from the last colon before the first '<' to that; as 'whole' without any
        uint32_t arguments; // for each '<', one bit for the text from the last colon to it
    };

    static Mark MarkOf(const char* scopes);

    std::vector<Mark> marks;
};
