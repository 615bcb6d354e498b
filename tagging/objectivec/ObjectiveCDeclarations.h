// What a declaration of Objective-C says, given its tokens.
//
// The tokens are those between the sign or keyword that begins the declaration and what ends it, both excluded. They
// are as in the source, macros unreplaced: what the macros stand for is guessed from the way people use them.
#pragma once

#include "tagging/tokens/SourceTokens.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tagging {

using TokenSpan = std::span<const Token>;

struct DeclaredName {
    std::string name;
    unsigned line = 0;
};

// The selector of a method, with the line of its first part. None when a macro makes the selector.
std::optional<DeclaredName> SelectorOf(TokenSpan method);

// The names of instance variables, or of properties (after the attributes in parentheses). What is in braces may be
// left out, the braces not.
std::vector<DeclaredName> VariablesOf(TokenSpan declaration);

// Without the attributes in parentheses that a property may begin with.
TokenSpan AfterPropertyAttributes(TokenSpan property);

struct ContainerHeader {
    DeclaredName name;
    bool isExtension = false;             // "Foo ()"
    std::optional<DeclaredName> category; // "Foo (Category)": the line is that of "Foo"
};

// What an "@interface", "@implementation" or "@protocol" begins. None without a name, and for "@protocol A, B".
std::optional<ContainerHeader> ContainerHeaderOf(TokenSpan header);

// Whether a '{' after these tokens begins the members of a struct, union or enumeration. The place of the keyword.
std::optional<size_t> OpenAggregate(TokenSpan tokens);

// Whether these tokens can be macros that expand to attributes or to nothing: "NAME", "NAME(arguments)".
bool MayBeOneMacro(TokenSpan tokens);

} // namespace tagging
