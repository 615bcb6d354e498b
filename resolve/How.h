// How sure an answer is.
#pragma once

#include <string_view>

namespace resolve {

// How an answer was found, from the surest to the least sure.
enum class How { Local, Member, Scope, Include, Name };
std::string_view NameOf(How how); // "local", "member" ...

} // namespace resolve
