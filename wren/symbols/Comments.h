// The comment that describes a declaration.
#pragma once

#include "wren/symbols/DeclarationRange.h"
#include "wren/symbols/SourceText.h"

#include <string>

namespace wren {

// In front of it without an empty line between, or else behind it on its last line; without the comment's own signs.
// "" for none.
std::string CommentOf(const DeclarationRange& declaration, const SourceText& text);

} // namespace wren
