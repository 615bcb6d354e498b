// The full pattern around a caret or a selection: a name with its scopes, or the selector of a message.
#pragma once

#include "scan/Pattern.h"

#include <optional>

namespace scan {

class Text;

// The whole name or selector, also right of the selection. None when the selection spans lines, exceeds 1024 bytes or
// is not a pattern.
std::optional<Pattern> PatternForLookup(const Text& text, long selStart, long selEnd);

// The part left of the selection's end, where the user is typing. None as above.
std::optional<Pattern> PatternForCompletion(const Text& text, long selStart, long selEnd);

} // namespace scan
