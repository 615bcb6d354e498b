// Blocks of a text that are shown by their first line alone.
#pragma once

#include "wren/desktop/editor/EditorLook.h"
#include "wren/desktop/editor/ViewText.h"

#include <vector>

namespace wren {

enum class FoldCommand { Toggle, All, None };

// The lexer finds the blocks while it colours: only what was shown, or is about to fold, has any. GUI thread.
namespace folds {

void SetUp(const ViewText& text); // the margin that shows them, and folds at a click
void SetLook(const ViewText& text, const EditorLook& look);

// Toggle: the block that begins at the caret's line, or the innermost one around it. The caret never stays in lines
// that are not shown. All finds the blocks of the whole text, and does nothing to one of more bytes than this.
constexpr long kMostForAll = 16L * 1024 * 1024;
void Apply(const ViewText& text, FoldCommand command);

void Reveal(const ViewText& text, long offset); // unfolds what hides it

// The first lines of folded blocks, from 0; a new lexer forgets them.
std::vector<long> Folded(const ViewText& text);
void FoldAgain(const ViewText& text, const std::vector<long>& lines);

} // namespace folds

} // namespace wren
