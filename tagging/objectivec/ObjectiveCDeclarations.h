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

// The same with their types, "NSString *", "int [3]", "void (^)(int)".
struct TypedName {
    DeclaredName name;
    std::string type;
};
std::vector<TypedName> TypedVariablesOf(TokenSpan declaration);

// The result's type and the parameters of a method: "id", "(int x,NSString * y)".
struct MethodTypes {
    std::string result;
    std::string parameters;
};
MethodTypes TypesOf(TokenSpan method);

// The tokens after the attributes in parentheses of a property, if any.
TokenSpan AfterPropertyAttributes(TokenSpan property);

struct ContainerHeader {
    DeclaredName name;
    bool isExtension = false;             // "Foo ()"
    std::optional<DeclaredName> category; // "Foo (Category)": the line is that of "Foo"
    TokenSpan parameters;                 // of a generic class, with the angles
    TokenSpan bases;                      // ": Superclass <Protocol>", or what there is of it
};

// The header of an "@interface", "@implementation" or "@protocol". Nullopt without a name, and for "@protocol A, B".
std::optional<ContainerHeader> ContainerHeaderOf(TokenSpan header);

// "Superclass,Protocol,Other" for ": Superclass<Argument> <Protocol, Other>".
std::string BasesOf(TokenSpan bases);

// The tokens as text, with blanks where they are needed or where ctags writes them.
std::string Joined(TokenSpan tokens);

// Returns the place of the keyword if a '{' after these tokens begins a struct, union or enumeration.
std::optional<size_t> OpenAggregate(TokenSpan tokens);

// Whether these tokens can be a macro for attributes or for nothing: "NAME", "NAME(arguments)".
bool MayBeOneMacro(TokenSpan tokens);

} // namespace tagging
