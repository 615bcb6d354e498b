// Text for answers, where it may not be text at all.
#pragma once

#include <string>
#include <string_view>

namespace wren {

// With U+FFFD in place of each byte that is no part of valid UTF-8.
std::string ValidUtf8(std::string_view text);

} // namespace wren
