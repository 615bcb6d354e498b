// Strings in insertion order.
#pragma once

#include <string>
#include <vector>

class StringVector {
public:
    void Clear();

    // Appends a copy unless the same string is in the list. Compares with each of them: for a few hundred strings at
    // most.
    void PushBackUnique(const char* s);

    // The longest common prefix of all strings, despite the name; "" for none.
    void CommonSubstring(std::string& out) const;

    void Dump() const; // each on a line of standard output, for debugging

    const std::vector<std::string>& Strings() const { return strings; }
    size_t Size() const { return strings.size(); }

private:
    std::vector<std::string> strings;
};
