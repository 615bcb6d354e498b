#include "wren/symbols/Keywords.h"

#include <algorithm>
#include <initializer_list>

namespace wren {

using tagging::Language;

const std::vector<std::string_view>& KeywordsOf(Language language)
{
    static const std::vector<std::string_view> kC = {
        "auto",   "break",    "case",     "char",     "const", "continue", "default", "do",     "double",
        "else",   "enum",     "extern",   "float",    "for",   "goto",     "if",      "inline", "int",
        "long",   "register", "restrict", "return",   "short", "signed",   "sizeof",  "static", "struct",
        "switch", "typedef",  "union",    "unsigned", "void",  "volatile", "while"};
    static const auto with = [](std::vector<std::string_view> words, std::initializer_list<std::string_view> more) {
        words.insert(words.end(), more);
        std::ranges::sort(words);
        return words;
    };
    static const std::vector<std::string_view> kCplusplus =
        with(kC, {"alignas",   "alignof",       "bool",        "catch",
                  "class",     "concept",       "consteval",   "constexpr",
                  "constinit", "const_cast",    "co_await",    "co_return",
                  "co_yield",  "decltype",      "delete",      "dynamic_cast",
                  "explicit",  "export",        "false",       "final",
                  "friend",    "mutable",       "namespace",   "new",
                  "noexcept",  "nullptr",       "operator",    "override",
                  "private",   "protected",     "public",      "reinterpret_cast",
                  "requires",  "static_assert", "static_cast", "template",
                  "this",      "thread_local",  "throw",       "true",
                  "try",       "typeid",        "typename",    "using",
                  "virtual",   "wchar_t"});
    static const std::initializer_list<std::string_view> kObjectiveCWords = {"BOOL", "NO",   "YES",  "id",
                                                                             "nil",  "self", "super"};
    static const std::vector<std::string_view> kObjectiveC = with(kC, kObjectiveCWords);
    static const std::vector<std::string_view> kBoth = with(kCplusplus, kObjectiveCWords);
    switch (language) {
    case Language::C:
        return kC;
    case Language::Cplusplus:
        return kCplusplus;
    case Language::ObjectiveC:
        return kObjectiveC;
    default:
        return kBoth;
    }
}

} // namespace wren
