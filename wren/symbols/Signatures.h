// Signatures as the index holds them, "(int a,char * b)".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wren {

// The parts between the commas of the outer brackets, which are "(" and ")" or "<" and ">"; none for "(void)".
std::vector<std::string_view> ParametersOf(std::string_view signature);

// As people write it: a blank behind each comma that is in no literal.
std::string WithBlanksBehindCommas(std::string_view signature);

bool IsVariadic(std::string_view parameter); // "...", "args...", "Types ... types"

// For comparing declarations: without name, default value and blanks.
std::string TypeOfParameter(std::string_view parameter);

} // namespace wren
