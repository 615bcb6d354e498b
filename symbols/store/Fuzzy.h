// How well a name matches a few typed letters.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace symbols {

// The letters of a pattern must be in the name in their order. The kinds of matches, best first:
//   the whole name; its beginning; beginnings of its words, by how few breaks there are between the letters (a match
//   that does not begin the name counts as one more); neighbouring letters; letters anywhere.
// A word starts at the beginning, after "_" or another sign, at a capital after a small letter, before the last of
// several capitals that a small letter follows, and where digits begin. Within a kind the shorter name is better. Case
// counts when the pattern has a capital.
class FuzzyPattern {
public:
    explicit FuzzyPattern(std::string_view letters);

    const std::string& Letters() const { return letters; }
    bool CaseCounts() const { return caseCounts; }

    // Higher is better; nullopt without a match.
    std::optional<int> Score(std::string_view name) const;
    std::vector<unsigned> Positions(std::string_view name) const; // in a name that matches, bytes from 0
    bool Contains(std::string_view text) const;                   // whether the letters are in the text in their order

private:
    bool AreEqual(char inName, char inPattern) const;
    size_t Find(std::string_view name) const;
    int Breaks(std::string_view name, std::vector<int>* from) const;

    std::string letters;
    bool caseCounts;
};

} // namespace symbols
