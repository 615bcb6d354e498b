// The full pattern around a caret or a selection: a name with its scopes, or the selector of a message.
#pragma once

#include "scan/Pattern.h"

#include <optional>

namespace scan {

class Text;

// The whole of the name or selector, to the right of the selection too. None when the selection spans lines, is longer
// than 1024 or means no pattern.
std::optional<Pattern> PatternForLookup(const Text& text, long selStart, long selEnd);

// What is to the left of the selection's end, where the name or selector is being typed. None as above.
std::optional<Pattern> PatternForCompletion(const Text& text, long selStart, long selEnd);

} // namespace scan
