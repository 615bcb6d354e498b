// Tells headers of C++ from those of C.
#pragma once

#include <string_view>

namespace tagging {

// Whether the text contains what only C++ has: classes, templates, namespaces, "::". Code between "#ifdef __cplusplus"
// and its end does not count, since a header of C has it too.
bool IsCplusplus(std::string_view text);

} // namespace tagging
