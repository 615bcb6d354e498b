// Commands on whole lines, and on the case of letters.
#pragma once

#include "wren/desktop/editor/ViewText.h"

#include <string>
#include <string_view>

namespace wren {

enum class LineCommand { ToggleComment, MoveUp, MoveDown, Duplicate, Delete, Join, UpperCase, LowerCase };

// What begins a comment that ends with its line, in a file of this name; "" when that is not known.
std::string_view CommentMark(const std::string& path);

// For the lines of the selection, or for that of the caret. A line counts when a character of it is selected, or it is
// the only one. 'mark' is for ToggleComment: all lines get it unless all have it. GUI thread.
void ApplyToLines(const ViewText& text, LineCommand command, std::string_view mark);

// Takes the blanks and tabs at the ends of all lines away. GUI thread.
void TrimLineEnds(const ViewText& text);

// Ends the last line as the view ends lines, unless it is empty. GUI thread.
void EndLastLine(const ViewText& text);

} // namespace wren
