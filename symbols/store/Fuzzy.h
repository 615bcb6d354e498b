// How well a name matches a few typed letters.
#pragma once

#include "symbols/store/Format.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace symbols {

// The kinds of matches, best first; numbers between kBeginning and kNeighbours are further breaks. A word starts at the
// beginning, at "_" and behind it or another sign, at a capital behind a small letter, at the last of several capitals
// before a small letter, and where digits begin.
constexpr int kWhole = 0;        // the name
constexpr int kBeginning = 1;    // of the name
constexpr int kNeighbours = 100; // the letters side by side, anywhere
constexpr int kAnywhere = 101;   // the letters in their order
constexpr int kNoMatch = 102;

// Letters that must be in a name in their order. Each of them follows the one before it or starts a word, with a break
// between; a match that does not begin the name has one break more. If that cannot be, they are kNeighbours or
// kAnywhere. Case counts when there is a capital. Immutable; any thread.
class FuzzyPattern {
public:
    explicit FuzzyPattern(std::string_view letters);

    const std::string& Letters() const { return letters; }
    bool IsEmpty() const { return letters.empty(); } // matches everything, as kAnywhere

    // What a name's traits leave possible.
    struct Chances {
        bool atWords = true;
        bool asNeighbours = true;
        bool anywhere = true;

        bool Any() const { return atWords || asNeighbours || anywhere; }
    };
    bool HasLetters(const NameTraits& traits) const { return (traits.letters & needed) == needed; } // or no chance
    Chances ChancesOf(const NameTraits& traits, int worst) const; // of kinds up to 'worst'

    // The kind, if it has a chance; kNoMatch or a worse kind otherwise. Looks at the first kLongestFuzzy bytes.
    int KindOf(std::string_view name, const Chances& chances) const;
    int KindOf(std::string_view name) const { return KindOf(name, Chances()); }

    std::vector<unsigned> Positions(std::string_view name) const; // of a match: bytes from 0
    bool Contains(std::string_view text) const;                   // whether the letters are in the text in their order

private:
    struct Pair {
        std::uint64_t bit;     // PairBit()
        std::uint64_t initial; // of the second letter, as in NameTraits::letters
    };

    bool AreEqual(char inName, char inPattern) const;
    size_t Find(std::string_view name) const;
    bool IsAtWords(std::string_view name) const;
    int LeastBreaks(std::string_view name) const;
    std::vector<unsigned> WordPositions(std::string_view name, int breaks) const;

    std::string letters;
    bool caseCounts;
    std::uint64_t needed = 0;  // LetterBit() of all letters
    std::uint64_t initial = 0; // of the first one
    std::vector<Pair> pairs;
    std::array<std::uint64_t, 256> places = {}; // of each byte among the letters, as bits
};

} // namespace symbols
