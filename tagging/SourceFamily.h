// What the name of a file says about its language.
#pragma once

#include <string_view>

namespace tagging {

struct NameOfSource {
    enum class Says { Nothing, C, Cplusplus, ObjectiveC, ObjectiveCplusplus } says = Says::Nothing;
    bool isHeader = true; // other files include it
};

NameOfSource ReadNameOfSource(std::string_view path);

} // namespace tagging
