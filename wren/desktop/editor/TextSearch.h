// Finding and replacing in the text of a view.
#pragma once

#include "wren/desktop/editor/ViewText.h"

#include <optional>
#include <string>

namespace wren {

// Regular expressions are ECMAScript's and match within a line; \1 to \9 in what replaces them are their groups.
struct TextSearch {
    std::string text; // empty: finds nothing
    bool regularExpression = false;
    bool matchCase = false;
    bool wholeWords = false;
    bool backwards = false;

    bool operator==(const TextSearch&) const = default;
};

namespace search {

bool IsValid(const ViewText& text, const TextSearch& search);

// The first match in [start, end), or the last one when the search runs backwards.
std::optional<Selection> FindIn(const ViewText& text, const TextSearch& search, long start, long end);

// The next match after the selection (backwards: before it), round the end.
std::optional<Selection> FindNext(const ViewText& text, const TextSearch& search, Selection from);

bool Matches(const ViewText& text, const TextSearch& search, Selection selected);

// Puts 'with' in the place of the match that was found last; the end of it.
long ReplaceFound(const ViewText& text, const TextSearch& search, const std::string& with);

long ReplaceAll(const ViewText& text, const TextSearch& search, const std::string& with);

long Count(const ViewText& text, const TextSearch& search, long atMost);

} // namespace search

} // namespace wren
