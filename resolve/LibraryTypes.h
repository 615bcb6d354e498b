// What the containers, pointers and iterators of the standard library yield. Their headers say so in ways that need a
// compiler.
#pragma once

#include "resolve/Type.h"

#include <optional>
#include <string_view>
#include <vector>

namespace resolve {

// A container, a smart pointer or an iterator whose parts are known here.
bool IsLibraryType(const Type& type);

// "*x", "x->", and the element in a range-based for.
std::optional<Type> Pointee(const Type& type);
std::optional<Type> Element(const Type& type);

// The result of "x[i]".
std::optional<Type> Indexed(const Type& type);

// The type of a data member, or the result of a member function: "first", "begin", "front", "find".
std::optional<Type> LibraryMember(const Type& type, std::string_view name);

// Of a structured binding of the type, number 'part'.
std::optional<Type> Part(const Type& type, size_t part);

// The result of a function such as "std::make_unique<T>(...)" or "std::move(x)", from its template's arguments and the
// types of what is passed.
std::optional<Type> LibraryCall(std::string_view name, const std::vector<Type>& arguments,
                                const std::vector<Type>& passed);

} // namespace resolve
