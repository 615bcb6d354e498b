// Tells most entries of a list that are not in a scope from those that are, without looking at them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Thousands of names may begin alike, and looking at the scope of each takes longer than a key stroke may: their texts
// lie all over the memory. The marks lie side by side. They only ever leave out entries that
// NameAndQualifier::MatchQualifier would not accept.
class ScopeMarks {
public:
    // Of entries as NameAndQualifier has them; the marks that were there before are forgotten.
    void Make(const std::vector<char*>& entries);

    // The first entry from 'first' on, and before 'last', that may match the qualifier of a pattern, which is not
    // empty; 'last' when there is none. Numbers of the entries that the marks were made of.
    size_t Find(const std::string& qualifier, size_t first, size_t last) const;

private:
    // Of scopes that match one another, what is behind the last colon is the same, as far as no template arguments
    // follow; these are left out of the comparison, and may stand anywhere.
    struct Mark {
        uint16_t whole;     // of what is behind the last colon
        uint16_t front;     // of what is behind the last colon in front of the first '<'; as 'whole' without any
        uint32_t arguments; // a bit for what is between the last colon and the '<', of each '<'
    };

    static Mark MarkOf(const char* scopes);

    std::vector<Mark> marks;
};
