#include "symbols/store/Fuzzy.h"

#include "symbols/store/NameTraits.h"
#include "symbols/store/SortTexts.h"

#include <algorithm>
#include <bit>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace symbols {

namespace {

// Longer patterns are found side by side only.
constexpr size_t kMostLetters = 64;

bool IsSmall(char c)
{
    return c >= 'a' && c <= 'z';
}

// A character to be found; a small letter may stand for its capital, too.
class Wanted {
public:
    Wanted(char character, bool inBothCases) : character(character), ignoredBits(inBothCases ? '\x20' : '\0') {}

    // The place after the first one at 'from' or later, or npos.
    size_t FindAfter(std::string_view text, size_t from) const
    {
#ifdef __SSE2__
        for (; text.size() - from >= kBlock; from += kBlock)
            if (const unsigned found = PlacesIn(text.data() + from); found != 0)
                return from + static_cast<size_t>(std::countr_zero(found)) + 1;
        if (text.size() >= kBlock) { // the last bytes, once more together with some before them
            const unsigned known = static_cast<unsigned>(from - (text.size() - kBlock));
            const unsigned found = PlacesIn(text.data() + text.size() - kBlock) >> known;
            return found == 0 ? std::string_view::npos : from + static_cast<size_t>(std::countr_zero(found)) + 1;
        }
#endif
        for (; from < text.size(); from++)
            if ((text[from] | ignoredBits) == character)
                return from + 1;
        return std::string_view::npos;
    }

private:
#ifdef __SSE2__
    static constexpr size_t kBlock = sizeof(__m128i);

    // As bits, the first place the lowest one.
    unsigned PlacesIn(const char* block) const
    {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block));
        const __m128i same = _mm_or_si128(bytes, _mm_set1_epi8(ignoredBits));
        return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(same, _mm_set1_epi8(character))));
    }
#endif
    char character;
    char ignoredBits;
};

} // namespace

FuzzyPattern::FuzzyPattern(std::string_view text) : letters(text), caseCounts(std::ranges::any_of(text, IsCapital))
{
    for (size_t i = 0; i < letters.size(); i++) {
        needed |= LetterBit(letters[i]);
        if (i > 0)
            pairs.push_back({PairBit(letters[i - 1], letters[i]), LetterBit(letters[i]) << kInitialsShift});
        for (const char c : {letters[i], caseCounts ? letters[i] : static_cast<char>(letters[i] & ~0x20)})
            if (i < kMostLetters && AreEqual(c, letters[i]))
                places[static_cast<unsigned char>(c)] |= std::uint64_t(1) << i;
    }
    initial = letters.empty() ? 0 : LetterBit(letters[0]) << kInitialsShift;
}

bool FuzzyPattern::AreEqual(char inName, char inPattern) const
{
    return (caseCounts ? inName : Lower(inName)) == inPattern;
}

FuzzyPattern::Chances FuzzyPattern::ChancesOf(const NameTraits& traits, int worst) const
{
    if (!HasLetters(traits))
        return {false, false, false};
    int missing = 0; // pairs of neighbours, each of which needs a break
    std::uint64_t initials = initial;
    for (const Pair& pair : pairs)
        if ((traits.pairs & pair.bit) == 0) {
            missing++;
            initials |= pair.initial;
        }
    return {(traits.letters & initials) == initials && missing <= worst - kBeginning,
            missing == 0 && worst >= kNeighbours, worst >= kAnywhere};
}

// This rules out most names, and looks at many of their characters at once.
bool FuzzyPattern::Contains(std::string_view text) const
{
    size_t after = 0;
    for (const char letter : letters) {
        after = Wanted(letter, !caseCounts && IsSmall(letter)).FindAfter(text, after);
        if (after == std::string_view::npos)
            return false;
    }
    return true;
}

size_t FuzzyPattern::Find(std::string_view name) const
{
    const auto found = std::search(name.begin(), name.end(), letters.begin(), letters.end(),
                                   [this](char a, char b) { return AreEqual(a, b); });
    return found == name.end() ? std::string_view::npos : static_cast<size_t>(found - name.begin());
}

// Goes through the name with a set of bits: how many letters may have been found so far.
bool FuzzyPattern::IsAtWords(std::string_view name) const
{
    std::uint64_t here = 0;   // the last of them just now
    std::uint64_t before = 0; // or earlier
    for (size_t i = 0; i < name.size(); i++) {
        const std::uint64_t fits = places[static_cast<unsigned char>(name[i])];
        here = here << 1 & fits;
        if (fits != 0 && IsWordStart(name, i))
            here |= (before << 1 | 1) & fits;
        before |= here;
    }
    return (before >> (std::min(letters.size(), kMostLetters) - 1) & 1) != 0;
}

// The same with sets for each number of breaks.
int FuzzyPattern::LeastBreaks(std::string_view name) const
{
    const size_t most = letters.size(); // each letter after a break
    std::array<std::uint64_t, kMostLetters + 1> here = {};
    std::array<std::uint64_t, kMostLetters + 1> before = {};
    size_t used = 1; // numbers of breaks that occur
    for (size_t i = 0; i < name.size(); i++) {
        const std::uint64_t fits = places[static_cast<unsigned char>(name[i])];
        const bool isStart = fits != 0 && IsWordStart(name, i);
        if (isStart && used <= most)
            used++;
        for (size_t breaks = used; breaks-- > 0;) {
            std::uint64_t next = here[breaks] << 1;
            if (isStart && breaks > 0)
                next |= before[breaks - 1] << 1;
            if (isStart && breaks == (i == 0 ? 0u : 1u))
                next |= 1;
            here[breaks] = next & fits;
        }
        for (size_t breaks = 0; breaks < used; breaks++)
            before[breaks] |= here[breaks];
    }
    for (size_t breaks = 0; breaks < used; breaks++)
        if ((before[breaks] >> (letters.size() - 1) & 1) != 0)
            return static_cast<int>(breaks);
    return kNoMatch;
}

int FuzzyPattern::KindOf(std::string_view name, const Chances& chances) const
{
    const std::string_view looked = name.substr(0, kLongestFuzzy);
    if (letters.empty())
        return kAnywhere;
    if (looked.size() < letters.size())
        return kNoMatch;
    if (!Contains(looked))
        return kNoMatch;
    if (chances.atWords && letters.size() <= kMostLetters && IsAtWords(looked)) {
        const int breaks = LeastBreaks(looked);
        return breaks == 0 && name.size() == letters.size() ? kWhole : kBeginning + breaks;
    }
    if (chances.asNeighbours && Find(looked) != std::string_view::npos)
        return name.size() == letters.size() ? kWhole : kNeighbours;
    return chances.anywhere ? kAnywhere : kNoMatch;
}

// The least places of a match with this number of breaks: backwards from each letter, what can still follow is known.
std::vector<unsigned> FuzzyPattern::WordPositions(std::string_view name, int breaks) const
{
    const size_t columns = name.size() + 1;
    // For each letter and place, the least breaks of this letter there and those after it.
    std::vector<int> least((letters.size() + 1) * columns, kNoMatch);
    std::fill(least.begin() + static_cast<std::ptrdiff_t>(letters.size() * columns), least.end(), 0);
    std::vector<int> anyStart(columns + 1, kNoMatch); // of the next letter at a word's start here or later
    for (size_t letter = letters.size(); letter-- > 0;) {
        std::vector<int> starts(columns + 1, kNoMatch);
        for (size_t i = name.size(); i-- > 0;) {
            starts[i] = starts[i + 1];
            if (!AreEqual(name[i], letters[letter]))
                continue;
            int after = least[(letter + 1) * columns + i + 1];
            if (letter + 1 < letters.size())
                after = std::min(after, anyStart[i + 1] + 1);
            least[letter * columns + i] = after;
            if (IsWordStart(name, i))
                starts[i] = std::min(starts[i], after);
        }
        anyStart = std::move(starts);
    }
    std::vector<unsigned> positions;
    for (size_t letter = 0, i = 0; letter < letters.size(); i++) {
        const bool follows = letter > 0 && positions.back() + 1 == i;
        const int cost = follows ? 0 : letter > 0 || i > 0 ? 1 : 0;
        if (i >= name.size())
            return {};
        if ((!follows && !IsWordStart(name, i)) || least[letter * columns + i] + cost > breaks)
            continue;
        breaks -= cost;
        positions.push_back(static_cast<unsigned>(i));
        letter++;
    }
    return positions;
}

std::vector<unsigned> FuzzyPattern::Positions(std::string_view name) const
{
    const std::string_view looked = name.substr(0, kLongestFuzzy);
    const int kind = KindOf(name);
    if (kind < kNeighbours && letters.size() <= kMostLetters)
        return WordPositions(looked, LeastBreaks(looked));
    std::vector<unsigned> positions;
    const size_t begin = kind == kNeighbours ? Find(looked) : 0;
    for (size_t i = begin; i < looked.size() && positions.size() < letters.size(); i++)
        if (AreEqual(looked[i], letters[positions.size()]))
            positions.push_back(static_cast<unsigned>(i));
    return positions;
}

} // namespace symbols
