#include "symbols/store/NameTraits.h"

#include "base/Identifier.h"
#include "symbols/store/SortTexts.h"

namespace symbols {

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
    return !IsCapital(before) || (at + 1 < name.size() && name[at + 1] >= 'a' && name[at + 1] <= 'z');
}

std::uint64_t LetterBit(char c)
{
    const char lower = Lower(c);
    const int bit = lower >= 'a' && lower <= 'z' ? lower - 'a' : base::IsDigit(c) ? 26 + (c - '0') % 5 : 31;
    return std::uint64_t(1) << bit;
}

std::uint64_t PairBit(char first, char second)
{
    const unsigned pair = static_cast<unsigned char>(Lower(first)) * 256u + static_cast<unsigned char>(Lower(second));
    return std::uint64_t(1) << (pair * 2654435761u >> 26);
}

NameTraits TraitsOf(std::string_view name)
{
    name = name.substr(0, kLongestFuzzy);
    NameTraits traits = {};
    for (size_t i = 0; i < name.size(); i++) {
        traits.letters |= LetterBit(name[i]);
        if (IsWordStart(name, i))
            traits.letters |= LetterBit(name[i]) << kInitialsShift;
        if (i > 0)
            traits.pairs |= PairBit(name[i - 1], name[i]);
    }
    return traits;
}

} // namespace symbols
