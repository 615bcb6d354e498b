#include "symbols/store/Fuzzy.h"

#include "symbols/store/NameTraits.h"

#include <gtest/gtest.h>

using namespace symbols;

namespace {

// "0" to "9": the number of breaks; "=": whole; "~": neighbours; "?": anywhere; "-": no match. '^' stands before each
// letter of the name that is found.
struct Case {
    const char* why;
    const char* pattern;
    const char* name;
    const char* kind;
};

const Case kCases[] = {
    {"the whole name", "size", "^s^i^z^e", "="},
    {"the whole name in other letters", "size", "^S^i^Z^E", "="},
    {"the beginning", "si", "^s^ize", "0"},
    {"a word behind an underscore", "size", "max_^s^i^z^e", "1"},
    {"a word at a capital", "size", "max^S^i^z^e", "1"},
    {"a word that digits begin", "32", "uint^3^2_t", "1"},
    {"the last of several capitals begins a word", "parser", "XML^P^a^r^s^e^r", "1"},
    {"first letters of words", "gd", "^get_^device", "1"},
    {"the fewest breaks count", "ab", "x_a_b_^a^b", "1"},
    {"first letters at the name's beginning need fewer breaks", "gd", "x_^get_^device", "2"},
    {"beginnings of words", "gede", "^g^et_^d^evice", "1"},
    {"an underscore of the pattern that the name has not", "t_d", "getd", "-"},
    {"an underscore starts a word", "g_d", "^get^_^device", "1"},
    {"side by side, but within a word", "ize", "s^i^z^e", "~"},
    {"anywhere", "sz", "^si^ze", "?"},
    {"not in this order", "zs", "size", "-"},
    {"each letter once", "ss", "size", "-"},
    {"a capital makes case count", "Si", "size", "-"},
    {"a capital makes case count for all letters", "Si", "^S^ize", "0"},
    {"other letters are small then", "Size", "SIZE", "-"},
    {"letters of any script", "\xc3\xa4", "x_^\xc3^\xa4", "1"},
    {"a pattern longer than the name", "sizes", "size", "-"},
};

std::string KindText(int kind)
{
    return kind == kWhole        ? "="
           : kind == kNeighbours ? "~"
           : kind == kAnywhere   ? "?"
           : kind >= kNoMatch    ? "-"
                                 : std::to_string(kind - kBeginning);
}

} // namespace

TEST(Fuzzy, FindsTheBestKindAndItsLetters)
{
    for (const Case& c : kCases) {
        std::string name;
        std::vector<unsigned> positions;
        for (const char* at = c.name; *at != '\0'; at++)
            if (*at == '^')
                positions.push_back(static_cast<unsigned>(name.size()));
            else
                name += *at;
        const FuzzyPattern pattern(c.pattern);
        EXPECT_EQ(KindText(pattern.KindOf(name)), c.kind) << c.why;
        if (*c.kind != '-') {
            EXPECT_EQ(pattern.Positions(name), positions) << c.why;
        }
    }
}

TEST(Fuzzy, TraitsRuleOutOnlyWhatDoesNotMatch)
{
    for (const Case& c : kCases) {
        std::string name = c.name;
        std::erase(name, '^');
        const FuzzyPattern pattern(c.pattern);
        const int kind = pattern.KindOf(name);
        const NameTraits traits = TraitsOf(name);
        for (int worst = std::max(kind, kBeginning); worst < kNoMatch; worst++)
            EXPECT_EQ(pattern.KindOf(name, pattern.ChancesOf(traits, worst)), kind) << c.why << ' ' << worst;
    }
}

TEST(Fuzzy, LooksAtTheBeginningOfALongName)
{
    const std::string name = std::string(1000, 'a') + "_size";
    EXPECT_EQ(FuzzyPattern("size").KindOf(name), kNoMatch);
    EXPECT_EQ(FuzzyPattern("aaa").KindOf(name), kBeginning);
    EXPECT_EQ(FuzzyPattern(std::string(100, 'a')).KindOf(name), kNeighbours);
    EXPECT_EQ(FuzzyPattern(std::string(100, 'a')).KindOf(std::string(100, 'a')), kWhole);
}
