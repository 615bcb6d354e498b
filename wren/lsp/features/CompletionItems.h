// Single items of a completion list.
#pragma once

#include "tagging/ParsedSource.h"
#include "wren/lsp/protocol/Json.h"

#include <string>

namespace wren::lsp {

// The protocol's CompletionItemKind. 'symbol' is a candidate of completion.
int CompletionKindOf(const tagging::Symbol& symbol);
inline constexpr int kKeywordItem = 14;
inline constexpr int kSnippetItem = 15;
inline constexpr int kFileItem = 17;

// What a client inserts for a call, with fields for its arguments: "area(${1:int a}, ${2:int b})", "moveTo:${1:x}
// y:${2:y}". "" for what is not called.
std::string SnippetOf(const tagging::Symbol& symbol);

} // namespace wren::lsp
