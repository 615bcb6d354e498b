// Shared ownership of a parsed text, for headers that need no more of it.
#pragma once

#include <memory>

namespace resolve {

struct ParsedText;
using ParsedTextPointer = std::shared_ptr<const ParsedText>;

} // namespace resolve
