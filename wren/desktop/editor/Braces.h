// Braces, brackets and parentheses, and their partners.
#pragma once

#include "wren/desktop/editor/ViewText.h"

#include <optional>

namespace wren::braces {

bool IsBrace(const ViewText& text, long offset);

struct Partner {
    std::optional<long> offset;
    bool tooFar = false; // there may be one beyond the limit
};

// Only braces of the same style count: a brace in a comment is not the partner of one in the code. The search has a
// limit, so that it can run at every move of the caret.
Partner FindPartner(const ViewText& text, long brace);

} // namespace wren::braces
