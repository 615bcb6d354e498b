// Names that a function declares, as far as they are visible at a place.
#pragma once

#include "resolve/Declarations.h"
#include "resolve/Tokens.h"

#include <functional>
#include <optional>
#include <string_view>

namespace resolve {

class KnownStatements;

struct LocalName : Declared {
    size_t scope = kNone; // the bracket that encloses all uses; kNone for the whole text
};

// Variables, parameters, local types and template parameters that are declared at or before a token: innermost first,
// and in a block the latest first. Stops when the function returns false.
void ForEachLocal(const Tokens& tokens, size_t place, const std::function<bool(const LocalName&)>& each);

std::optional<LocalName> FindLocal(const Tokens& tokens, size_t place);                        // of the word there
std::optional<LocalName> FindLocal(const Tokens& tokens, size_t place, std::string_view name); // seen from there
// The same, for many places: 'known' is of the same tokens and name, and lasts from one question to the next.
std::optional<LocalName> FindLocal(const Tokens& tokens, size_t place, std::string_view name, KnownStatements& known);

// The nearest declaration of that name before the place, whatever encloses it: for functions whose braces conditions
// have left open.
std::optional<LocalName> FindLoosely(const Tokens& tokens, size_t place);

// The label that a goto at the place, or the label itself, means.
std::optional<LocalName> FindLabel(const Tokens& tokens, size_t place);
std::optional<LocalName> FindLabel(const Tokens& tokens, size_t body, std::string_view name);
// The '{' of the outermost block around the place that labels can be in; kNone without one.
size_t BodyOfLabels(const Tokens& tokens, size_t place);

} // namespace resolve
