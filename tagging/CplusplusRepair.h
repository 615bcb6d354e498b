// Makes C++ readable for a ctags that knows less of the language.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tagging {

// A source with blanks in place of what makes ctags overlook declarations. All lines keep their numbers.
struct RepairedText {
    std::string text;

    struct Template { // that was taken out
        unsigned line;
        std::string parameters; // "<class T,class U>"
    };
    std::vector<Template> templates; // by line
};

// ctags 5.9 overlooks
// - "~A() override;" and destructors with a macro before their bodies,
// - "Value value = Value{1};" outside of functions,
// - "template <class T, class U> T f(U u);": the result's type is one of the parameters, and not the last,
// - "enum E UNDERLYING(char) { kOne };".
//
// Nullopt if the text contains no such thing. Reads any text. Stateless; any thread.
std::optional<RepairedText> RepairCplusplus(std::string_view text);

} // namespace tagging
