// Interprets the tokens of Objective-C declarations.
//
// The tokens exclude the sign or keyword that begins the declaration, and its end. Macros are not expanded; their
// meaning is guessed from common use.
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

// The selector of a method, with the line of its first part. Nullopt when a macro makes the selector.
std::optional<DeclaredName> SelectorOf(TokenSpan method);

// The names of instance variables, or of properties (after the attributes in parentheses). The content of braces may be
// missing, but not the braces.
std::vector<DeclaredName> VariablesOf(TokenSpan declaration);

// The tokens after the attributes in parentheses of a property, if any.
TokenSpan AfterPropertyAttributes(TokenSpan property);

struct ContainerHeader {
    DeclaredName name;
    bool isExtension = false;             // "Foo ()"
    std::optional<DeclaredName> category; // "Foo (Category)": the line is that of "Foo"
};

// The header of an "@interface", "@implementation" or "@protocol". Nullopt without a name, and for "@protocol A, B".
std::optional<ContainerHeader> ContainerHeaderOf(TokenSpan header);

// Returns the place of the keyword if a '{' after these tokens begins a struct, union or enumeration.
std::optional<size_t> OpenAggregate(TokenSpan tokens);

// Whether these tokens can be a macro for attributes or for nothing: "NAME", "NAME(arguments)".
bool MayBeOneMacro(TokenSpan tokens);

} // namespace tagging
