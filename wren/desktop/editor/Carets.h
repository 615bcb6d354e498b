// Several carets in one text: what is typed comes in at each of them.
#pragma once

#include "wren/desktop/editor/Indentation.h"
#include "wren/desktop/editor/ViewText.h"

namespace wren {

// NextMatch: the word at the caret is selected; then also the next place that has the selected text, past the end from
// the beginning. LineAbove and LineBelow: in the column of the outermost caret.
enum class CaretCommand { NextMatch, AllMatches, LineAbove, LineBelow };

// Lookups and commands that know one caret mean the main one, the last that was added. GUI thread.
namespace carets {

constexpr long kMost = 1000; // that these commands make

void SetUp(const ViewText& text);
void SetLook(const ViewText& text, bool dark);
bool AreSeveral(const ViewText& text);
void Apply(const ViewText& text, CaretCommand command);
void ToggleAt(const ViewText& text, long offset); // one caret more, or that one less

// Gives each caret's line the blanks that follow from the line above.
void IndentLines(const ViewText& text, Indentation indentation);

} // namespace carets

} // namespace wren
