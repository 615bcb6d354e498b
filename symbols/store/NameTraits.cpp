#include "symbols/store/NameTraits.h"

#include "base/Identifier.h"
#include "symbols/store/SortTexts.h"

#include <array>

namespace symbols {

namespace {

// What a character is to the words of a name, and its bit among the letters. All characters are looked up: the traits
// of millions of names are made with each index.
enum class Sign : std::uint8_t { Mark, Small, Capital, Digit };

struct Character {
    Sign sign = Sign::Mark;
    std::uint8_t bit = 31;
    char lower = 0;
};

constexpr std::array<Character, 256> Characters()
{
    std::array<Character, 256> all = {};
    for (size_t i = 0; i < all.size(); i++) {
        const char c = static_cast<char>(i);
        Character& character = all[i];
        character.lower = Lower(c);
        if (character.lower >= 'a' && character.lower <= 'z') {
            character.sign = IsCapital(c) ? Sign::Capital : Sign::Small;
            character.bit = static_cast<std::uint8_t>(character.lower - 'a');
        } else if (base::IsDigit(c)) {
            character.sign = Sign::Digit;
            character.bit = static_cast<std::uint8_t>(26 + (c - '0') % 5);
        }
    }
    return all;
}
constexpr std::array<Character, 256> kCharacters = Characters();

inline const Character& CharacterOf(char c)
{
    return kCharacters[static_cast<unsigned char>(c)];
}

inline bool StartsWord(Sign before, Sign here, Sign next)
{
    if (here == Sign::Mark || before == Sign::Mark)
        return true;
    if (here == Sign::Digit)
        return before != Sign::Digit;
    return here == Sign::Capital && (before != Sign::Capital || next == Sign::Small);
}

inline std::uint64_t BitOfPair(char first, char second) // in lower case
{
    const unsigned pair = static_cast<unsigned char>(first) * 256u + static_cast<unsigned char>(second);
    return std::uint64_t(1) << (pair * 2654435761u >> 26);
}

} // namespace

bool IsWordStart(std::string_view name, size_t at)
{
    const Sign before = at > 0 ? CharacterOf(name[at - 1]).sign : Sign::Mark;
    return StartsWord(before, CharacterOf(name[at]).sign,
                      at + 1 < name.size() ? CharacterOf(name[at + 1]).sign : Sign::Mark);
}

std::uint64_t LetterBit(char c)
{
    return std::uint64_t(1) << CharacterOf(c).bit;
}

std::uint64_t PairBit(char first, char second)
{
    return BitOfPair(Lower(first), Lower(second));
}

NameTraits TraitsOf(std::string_view name)
{
    name = name.substr(0, kLongestFuzzy);
    NameTraits traits = {};
    Character before;
    for (size_t i = 0; i < name.size(); i++) {
        const Character& here = CharacterOf(name[i]);
        const std::uint64_t letter = std::uint64_t(1) << here.bit;
        traits.letters |= letter;
        if (StartsWord(before.sign, here.sign, i + 1 < name.size() ? CharacterOf(name[i + 1]).sign : Sign::Mark))
            traits.letters |= letter << kInitialsShift;
        if (i > 0)
            traits.pairs |= BitOfPair(before.lower, here.lower);
        before = here;
    }
    return traits;
}

} // namespace symbols
