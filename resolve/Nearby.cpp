#include "resolve/Nearby.h"

namespace resolve {

namespace {

constexpr size_t kBehind = 3000;    // tokens further down count as far away: they are often written later
constexpr size_t kNear = 40;        // tokens; nearer than this is all the same
constexpr std::uint64_t kAlike = 4; // a use behind the same token as the place counts as many others
constexpr std::uint64_t kScale = std::uint64_t{1} << 32;

bool IsAccess(const Token& token)
{
    return token.Is('.') || token.text == "->" || token.IsMark("::");
}

// A scope has other names than an object.
size_t Farther(const Tokens& tokens, size_t i, size_t sign, std::string_view receiver, size_t distance)
{
    if (!IsAccess(tokens[i - 1]) || tokens[i - 1].IsMark("::") != tokens[sign].IsMark("::"))
        return tokens[sign].IsMark("::") ? 8 * distance + 8000 : 4 * distance + 2000;
    return !receiver.empty() && ReceiverName(tokens, i - 1) == receiver ? distance : 2 * distance + 300;
}

} // namespace

Nearby::Nearby(const Tokens& tokens, size_t place, size_t sign)
{
    const std::string_view receiver = sign == kNone ? std::string_view() : ReceiverName(tokens, sign);
    for (size_t i = 0; i < tokens.Count(); ++i) {
        if (!tokens[i].IsWord() || i == place)
            continue;
        const size_t distance = i < place ? place - i : kBehind + (i - place);
        const bool isAlike = i > 0 && sign == kNone && place > 0 && tokens[i - 1].text == tokens[place - 1].text;
        anywhere[tokens[i].text] += (isAlike ? kAlike : 1) * (kScale / (distance + kNear));
        if (sign != kNone)
            fitting[tokens[i].text] += kScale / (Farther(tokens, i, sign, receiver, distance) + kNear);
    }
}

std::uint64_t Nearby::Get(const Weights& from, std::string_view name)
{
    const auto found = from.find(name.substr(0, name.find(':'))); // of a selector, the first part
    return found == from.end() ? 0 : found->second;
}

std::string_view ReceiverName(const Tokens& tokens, size_t sign)
{
    size_t last = sign - 1;
    while ((tokens[last].Is(')') || tokens[last].Is(']')) && tokens[last].match < last)
        last = tokens[last].match - 1;
    return tokens[last].IsWord() ? tokens[last].text : std::string_view();
}

} // namespace resolve
