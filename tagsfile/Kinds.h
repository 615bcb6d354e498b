// The kinds of tags: their letters in a tags file, and their meanings.
#pragma once

#include <algorithm>
#include <iterator>
#include <string_view>

namespace tagsfile {

// C and C++: ctags' own letters.
namespace kind {
inline constexpr char kClass = 'c';
inline constexpr char kEnumeration = 'g';
inline constexpr char kEnumerator = 'e';
inline constexpr char kFunction = 'f';
inline constexpr char kNamespace = 'n';
inline constexpr char kPrototype = 'p';
inline constexpr char kStruct = 's';
inline constexpr char kTypedef = 't';
inline constexpr char kUnion = 'u';

// Objective-C: ctags uses other letters.
inline constexpr char kInterface = 'X';
inline constexpr char kImplementation = 'R';
inline constexpr char kInstanceMethod = 'o'; // in an implementation
inline constexpr char kClassMethod = 'O';    // in an implementation
inline constexpr char kInstanceMethodDeclaration = 'm';
inline constexpr char kClassMethodDeclaration = 'M';
inline constexpr char kProtocol = 'P';
inline constexpr char kCategory = 'C';
inline constexpr char kProperty = 'y';
inline constexpr char kInstanceVariable = 'v'; // ctags' letter of a variable: 'm' would make it a method
} // namespace kind

struct Kind {
    // What lists write before the name of such a tag.
    enum class Prefix { None, Word, Scope };

    char letter;
    Prefix prefix = Prefix::None;
    std::string_view word = "";      // for Prefix::Word
    bool isDefinition = false;       // has a body; every other kind is a declaration
    std::string_view scopeWord = ""; // precedes the scope of a tag inside one of this kind
};

// Only kinds that differ from an unknown one, which is a declaration.
inline constexpr Kind kKinds[] = {
    {.letter = kind::kClass, .prefix = Kind::Prefix::Word, .word = "class", .scopeWord = "class:"},
    {.letter = kind::kNamespace, .prefix = Kind::Prefix::Word, .word = "namespace", .scopeWord = "namespace:"},
    {.letter = kind::kStruct, .prefix = Kind::Prefix::Word, .word = "struct", .scopeWord = "struct:"},
    {.letter = kind::kUnion, .prefix = Kind::Prefix::Word, .word = "union", .scopeWord = "union:"},
    {.letter = kind::kInterface, .prefix = Kind::Prefix::Word, .word = "interface"},
    {.letter = kind::kFunction, .prefix = Kind::Prefix::Scope, .isDefinition = true},
    {.letter = kind::kPrototype, .prefix = Kind::Prefix::Scope},
    {.letter = kind::kTypedef, .prefix = Kind::Prefix::Scope},
    {.letter = kind::kInstanceMethod, .isDefinition = true},
    {.letter = kind::kClassMethod, .isDefinition = true},
    {.letter = kind::kImplementation, .isDefinition = true},
};

// The properties of a letter; those of an unknown kind, with the letter, if it is not in the table.
constexpr Kind KindOf(char letter)
{
    const auto known = std::find_if(std::begin(kKinds), std::end(kKinds),
                                    [letter](const Kind& kind) { return kind.letter == letter; });
    return known != std::end(kKinds) ? *known : Kind{.letter = letter};
}

// The scope words that readers know, in the order in which they are stripped from a scope. A scope with any other word
// counts as none.
inline constexpr std::string_view kScopeWords[] = {KindOf(kind::kClass).scopeWord, KindOf(kind::kNamespace).scopeWord,
                                                   KindOf(kind::kStruct).scopeWord, KindOf(kind::kUnion).scopeWord};

} // namespace tagsfile
