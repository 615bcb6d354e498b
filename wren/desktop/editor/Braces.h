// Braces, brackets and parentheses, and their partners.
#pragma once

#include "wren/desktop/editor/ViewText.h"

#include <optional>

namespace wren::braces {

bool IsBrace(const ViewText& text, long offset);

struct Partner {
    std::optional<long> offset;
    bool tooFar = false; // there may be one farther away than is looked
};

// Only braces of the same style count: one in a comment is no partner of one in the code. Looks a limited way, so that
// it can be asked at every move of the caret.
Partner FindPartner(const ViewText& text, long brace);

} // namespace wren::braces
