// Strings in the order in which they were found.
#pragma once

#include <string>
#include <vector>

class StringVector {
public:
    void Clear();

    // Appends a copy unless the same string is there. Looks at all of them: for lists of no more than some hundreds.
    void PushBackUnique(const char* s);

    // The longest common beginning of all strings, whatever the name says; "" for none.
    void CommonSubstring(std::string& out) const;

    void Dump() const; // each on a line of standard output, for debugging

    const std::vector<std::string>& Strings() const { return strings; }
    size_t Size() const { return strings.size(); }

private:
    std::vector<std::string> strings;
};
