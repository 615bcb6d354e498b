#include "tagging/tokens/Keywords.h"

#include <array>
#include <cstddef>
#include <iterator>

namespace tagging {

namespace {

struct Reserved {
    std::string_view word;
    Keyword kind;
};

using enum Keyword;

// By first letter.
constexpr Reserved kReserved[] = {
    {"_Alignas", OfBoth},
    {"_Alignof", OfBoth},
    {"_Atomic", OfBoth},
    {"_Bool", OfBoth},
    {"_Complex", OfBoth},
    {"_Generic", OfBoth},
    {"_Noreturn", OfBoth},
    {"_Static_assert", OfBoth},
    {"_Thread_local", OfBoth},
    {"__asm__", OfBoth},
    {"__attribute__", OfBoth},
    {"__extension__", OfBoth},
    {"__inline", OfBoth},
    {"__inline__", OfBoth},
    {"__restrict", OfBoth},
    {"__typeof__", OfBoth},
    {"__volatile__", OfBoth},
    {"alignas", OfCplusplus},
    {"alignof", OfCplusplus},
    {"and", OfCplusplus},
    {"asm", OfBoth},
    {"auto", OfBoth},
    {"bool", OfCplusplus},
    {"break", OfBoth},
    {"case", OfBoth},
    {"catch", OfCplusplus},
    {"char", OfBoth},
    {"class", OfCplusplusOutright},
    {"co_await", OfCplusplus},
    {"co_return", OfCplusplus},
    {"co_yield", OfCplusplus},
    {"concept", OfCplusplus},
    {"const", OfBoth},
    {"const_cast", OfCplusplus},
    {"consteval", OfCplusplus},
    {"constexpr", OfCplusplusOutright},
    {"constinit", OfCplusplus},
    {"continue", OfBoth},
    {"decltype", OfCplusplus},
    {"default", OfBoth},
    {"delete", OfCplusplus},
    {"do", OfBoth},
    {"double", OfBoth},
    {"dynamic_cast", OfCplusplus},
    {"else", OfBoth},
    {"enum", OfBoth},
    {"explicit", OfCplusplus},
    {"export", OfCplusplus},
    {"extern", OfBoth},
    {"false", OfCplusplus},
    {"float", OfBoth},
    {"for", OfBoth},
    {"friend", OfCplusplus},
    {"goto", OfBoth},
    {"if", OfBoth},
    {"inline", OfBoth},
    {"int", OfBoth},
    {"long", OfBoth},
    {"mutable", OfCplusplus},
    {"namespace", OfCplusplusOutright},
    {"new", OfCplusplus},
    {"noexcept", OfCplusplus},
    {"not", OfCplusplus},
    {"nullptr", OfCplusplus},
    {"operator", OfCplusplusOutright},
    {"or", OfCplusplus},
    {"private", OfCplusplusOutright},
    {"protected", OfCplusplusOutright},
    {"public", OfCplusplusOutright},
    {"register", OfBoth},
    {"reinterpret_cast", OfCplusplus},
    {"requires", OfCplusplus},
    {"restrict", OfBoth},
    {"return", OfBoth},
    {"short", OfBoth},
    {"signed", OfBoth},
    {"sizeof", OfBoth},
    {"static", OfBoth},
    {"static_assert", OfCplusplus},
    {"static_cast", OfCplusplus},
    {"struct", OfBoth},
    {"switch", OfBoth},
    {"template", OfCplusplusOutright},
    {"this", OfCplusplus},
    {"thread_local", OfCplusplus},
    {"throw", OfCplusplus},
    {"true", OfCplusplus},
    {"try", OfCplusplus},
    {"typedef", OfBoth},
    {"typeid", OfCplusplus},
    {"typename", OfCplusplusOutright},
    {"union", OfBoth},
    {"unsigned", OfBoth},
    {"using", OfCplusplusOutright},
    {"virtual", OfCplusplusOutright},
    {"void", OfBoth},
    {"volatile", OfBoth},
    {"while", OfBoth},
};

// The places in the table at which words with each first character begin; one more for the end.
constexpr std::array<unsigned char, 129> Beginnings()
{
    std::array<unsigned char, 129> beginnings{};
    size_t at = 0;
    for (size_t c = 0; c < beginnings.size(); ++c) {
        while (at < std::size(kReserved) && static_cast<size_t>(kReserved[at].word[0]) < c)
            ++at;
        beginnings[c] = static_cast<unsigned char>(at);
    }
    return beginnings;
}
constexpr std::array<unsigned char, 129> kBeginnings = Beginnings();

} // namespace

Keyword KindOfKeyword(std::string_view word)
{
    const auto first = static_cast<unsigned char>(word[0]);
    if (first >= 128)
        return No;
    for (size_t at = kBeginnings[first]; at < kBeginnings[first + 1]; ++at)
        if (kReserved[at].word == word)
            return kReserved[at].kind;
    return No;
}

} // namespace tagging
