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

// By first letter.
constexpr Reserved kReserved[] = {
    {"_Alignas", Keyword::OfBoth},
    {"_Alignof", Keyword::OfBoth},
    {"_Atomic", Keyword::OfBoth},
    {"_Bool", Keyword::OfBoth},
    {"_Complex", Keyword::OfBoth},
    {"_Generic", Keyword::OfBoth},
    {"_Noreturn", Keyword::OfBoth},
    {"_Static_assert", Keyword::OfBoth},
    {"_Thread_local", Keyword::OfBoth},
    {"__asm__", Keyword::OfBoth},
    {"__attribute__", Keyword::OfBoth},
    {"__extension__", Keyword::OfBoth},
    {"__inline", Keyword::OfBoth},
    {"__inline__", Keyword::OfBoth},
    {"__restrict", Keyword::OfBoth},
    {"__typeof__", Keyword::OfBoth},
    {"__volatile__", Keyword::OfBoth},
    {"alignas", Keyword::OfCplusplus},
    {"alignof", Keyword::OfCplusplus},
    {"and", Keyword::OfCplusplus},
    {"asm", Keyword::OfBoth},
    {"auto", Keyword::OfBoth},
    {"bool", Keyword::OfCplusplus},
    {"break", Keyword::OfBoth},
    {"case", Keyword::OfBoth},
    {"catch", Keyword::OfCplusplus},
    {"char", Keyword::OfBoth},
    {"class", Keyword::OfCplusplusOutright},
    {"co_await", Keyword::OfCplusplus},
    {"co_return", Keyword::OfCplusplus},
    {"co_yield", Keyword::OfCplusplus},
    {"concept", Keyword::OfCplusplus},
    {"const", Keyword::OfBoth},
    {"const_cast", Keyword::OfCplusplus},
    {"consteval", Keyword::OfCplusplus},
    {"constexpr", Keyword::OfCplusplusOutright},
    {"constinit", Keyword::OfCplusplus},
    {"continue", Keyword::OfBoth},
    {"decltype", Keyword::OfCplusplus},
    {"default", Keyword::OfBoth},
    {"delete", Keyword::OfCplusplus},
    {"do", Keyword::OfBoth},
    {"double", Keyword::OfBoth},
    {"dynamic_cast", Keyword::OfCplusplus},
    {"else", Keyword::OfBoth},
    {"enum", Keyword::OfBoth},
    {"explicit", Keyword::OfCplusplus},
    {"export", Keyword::OfCplusplus},
    {"extern", Keyword::OfBoth},
    {"false", Keyword::OfCplusplus},
    {"float", Keyword::OfBoth},
    {"for", Keyword::OfBoth},
    {"friend", Keyword::OfCplusplus},
    {"goto", Keyword::OfBoth},
    {"if", Keyword::OfBoth},
    {"inline", Keyword::OfBoth},
    {"int", Keyword::OfBoth},
    {"long", Keyword::OfBoth},
    {"mutable", Keyword::OfCplusplus},
    {"namespace", Keyword::OfCplusplusOutright},
    {"new", Keyword::OfCplusplus},
    {"noexcept", Keyword::OfCplusplus},
    {"not", Keyword::OfCplusplus},
    {"nullptr", Keyword::OfCplusplus},
    {"operator", Keyword::OfCplusplusOutright},
    {"or", Keyword::OfCplusplus},
    {"private", Keyword::OfCplusplusOutright},
    {"protected", Keyword::OfCplusplusOutright},
    {"public", Keyword::OfCplusplusOutright},
    {"register", Keyword::OfBoth},
    {"reinterpret_cast", Keyword::OfCplusplus},
    {"requires", Keyword::OfCplusplus},
    {"restrict", Keyword::OfBoth},
    {"return", Keyword::OfBoth},
    {"short", Keyword::OfBoth},
    {"signed", Keyword::OfBoth},
    {"sizeof", Keyword::OfBoth},
    {"static", Keyword::OfBoth},
    {"static_assert", Keyword::OfCplusplus},
    {"static_cast", Keyword::OfCplusplus},
    {"struct", Keyword::OfBoth},
    {"switch", Keyword::OfBoth},
    {"template", Keyword::OfCplusplusOutright},
    {"this", Keyword::OfCplusplus},
    {"thread_local", Keyword::OfCplusplus},
    {"throw", Keyword::OfCplusplus},
    {"true", Keyword::OfCplusplus},
    {"try", Keyword::OfCplusplus},
    {"typedef", Keyword::OfBoth},
    {"typeid", Keyword::OfCplusplus},
    {"typename", Keyword::OfCplusplusOutright},
    {"union", Keyword::OfBoth},
    {"unsigned", Keyword::OfBoth},
    {"using", Keyword::OfCplusplusOutright},
    {"virtual", Keyword::OfCplusplusOutright},
    {"void", Keyword::OfBoth},
    {"volatile", Keyword::OfBoth},
    {"while", Keyword::OfBoth},
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
        return Keyword::No;
    for (size_t at = kBeginnings[first]; at < kBeginnings[first + 1]; ++at)
        if (kReserved[at].word == word)
            return kReserved[at].kind;
    return Keyword::No;
}

} // namespace tagging
