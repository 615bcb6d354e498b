#include "resolve/How.h"

#include <cstddef>

namespace resolve {

std::string_view NameOf(How how)
{
    static constexpr std::string_view kNames[] = {"local", "member", "scope", "include", "name"};
    return kNames[static_cast<size_t>(how)];
}

} // namespace resolve
