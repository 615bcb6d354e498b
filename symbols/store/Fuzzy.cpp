#include "symbols/store/Fuzzy.h"

#include "base/Identifier.h"
#include "symbols/store/SortTexts.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace symbols {

namespace {

constexpr size_t kLongestPattern = 250;
constexpr size_t kLongestName = 1024; // letters behind it are not looked at
constexpr int kNone = 1000;
constexpr int kNeighbours = 900; // the kinds that do not begin at words, in the unit of breaks
constexpr int kAnywhere = 901;
constexpr int kLengthUnits = 2048;

bool IsCapital(char c)
{
    return c >= 'A' && c <= 'Z';
}

bool IsSmall(char c)
{
    return c >= 'a' && c <= 'z';
}

bool IsWordStart(std::string_view name, size_t at)
{
    const char c = name[at];
    if (at == 0 || !base::IsIdentifierCharacter(c) || c == '_')
        return true;
    const char before = name[at - 1];
    if (before == '_' || !base::IsIdentifierCharacter(before))
        return true;
    if (base::IsDigit(c))
        return !base::IsDigit(before);
    if (!IsCapital(c))
        return false;
    return !IsCapital(before) || (at + 1 < name.size() && IsSmall(name[at + 1]));
}

} // namespace

FuzzyPattern::FuzzyPattern(std::string_view text) : letters(text), caseCounts(std::ranges::any_of(text, IsCapital)) {}

bool FuzzyPattern::AreEqual(char inName, char inPattern) const
{
    return (caseCounts ? inName : Lower(inName)) == inPattern;
}

bool FuzzyPattern::Contains(std::string_view text) const
{
    size_t next = 0;
    for (size_t i = 0; i < text.size() && next < letters.size(); i++)
        next += AreEqual(text[i], letters[next]) ? 1 : 0;
    return next == letters.size();
}

size_t FuzzyPattern::Find(std::string_view name) const
{
    const auto found = std::ranges::search(name, letters, [this](char a, char b) { return AreEqual(a, b); });
    return found.empty() && !letters.empty() ? std::string_view::npos
                                             : static_cast<size_t>(found.begin() - name.begin());
}

// The least number of breaks when each letter follows its neighbour or starts a word; kNone if that cannot be. With
// 'from', says for each letter (rows) and place in the name (columns) where the letter before it was; -1 for nowhere.
int FuzzyPattern::Breaks(std::string_view name, std::vector<int>* from) const
{
    const size_t count = letters.size();
    struct Least {
        int breaks = kNone;
        int place = -1;
    };
    std::array<int, kLongestPattern> here;  // with the letter at the last place looked at
    std::array<Least, kLongestPattern> any; // with the letter at any place so far
    std::fill_n(here.begin(), count, kNone);
    std::fill_n(any.begin(), count, Least());
    for (size_t i = 0; i < name.size(); i++) {
        const bool isStart = IsWordStart(name, i);
        for (size_t letter = std::min(count, i + 1); letter-- > 0;) {
            Least least;
            if (!AreEqual(name[i], letters[letter])) {
                here[letter] = kNone;
                continue;
            }
            if (letter == 0)
                least.breaks = i == 0 ? 0 : isStart ? 1 : kNone;
            else {
                if (isStart && any[letter - 1].breaks < kNone)
                    least = {any[letter - 1].breaks + 1, any[letter - 1].place};
                if (here[letter - 1] <= least.breaks && here[letter - 1] < kNone)
                    least = {here[letter - 1], static_cast<int>(i) - 1};
            }
            here[letter] = least.breaks;
            if (from != nullptr && least.breaks < kNone)
                (*from)[letter * name.size() + i] = least.place;
            if (least.breaks < any[letter].breaks)
                any[letter] = {least.breaks, static_cast<int>(i)};
        }
    }
    if (from != nullptr)
        from->push_back(any[count - 1].place);
    return any[count - 1].breaks;
}

std::optional<int> FuzzyPattern::Score(std::string_view name) const
{
    if (letters.empty() || letters.size() > std::min(kLongestPattern, name.size()))
        return std::nullopt;
    const std::string_view looked = name.substr(0, kLongestName);
    if (!Contains(looked))
        return std::nullopt;
    int kind = Breaks(looked, nullptr) + 1;
    if (kind == 1 && name.size() == letters.size())
        kind = 0;
    if (kind > kNone)
        kind = Find(looked) != std::string_view::npos ? kNeighbours : kAnywhere;
    return (kNone - kind) * kLengthUnits - static_cast<int>(std::min<size_t>(name.size(), kLengthUnits - 1));
}

std::vector<unsigned> FuzzyPattern::Positions(std::string_view name) const
{
    const std::string_view looked = name.substr(0, kLongestName);
    std::vector<unsigned> positions(letters.size());
    if (!Score(name))
        return {};
    std::vector<int> from(letters.size() * looked.size(), -1);
    if (Breaks(looked, &from) < kNone) {
        int place = from.back();
        for (size_t letter = letters.size(); letter-- > 0;) {
            positions[letter] = static_cast<unsigned>(place);
            place = from[letter * looked.size() + static_cast<size_t>(place)];
        }
        return positions;
    }
    size_t place = Find(looked);
    const bool areNeighbours = place != std::string_view::npos;
    place = areNeighbours ? place : 0;
    for (size_t letter = 0; letter < letters.size(); place++)
        if (AreEqual(looked[place], letters[letter]))
            positions[letter++] = static_cast<unsigned>(place);
    return positions;
}

} // namespace symbols
