// The comment that describes a declaration.
#pragma once

#include "wren/lsp/session/DeclarationRange.h"
#include "wren/lsp/session/Text.h"

#include <string>

namespace wren::lsp {

// In front of it without an empty line between, or else behind it on its last line; without the comment's own signs.
// "" for none.
std::string CommentOf(const DeclarationRange& declaration, const Text& text);

} // namespace wren::lsp
