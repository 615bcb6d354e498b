// From a source to its header, and back.
#pragma once

#include "wren/desktop/symbols/AskedText.h"
#include "wren/desktop/symbols/SymbolEngine.h"

#include <optional>
#include <string>

namespace wren {

// The absolute path of the header of a source, or the source of a header. It blocks; it is for a question's thread.
std::optional<std::string> OtherHalfOf(const AskedText& asked, const Question& question);

} // namespace wren
