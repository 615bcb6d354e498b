// Keys that move in a list while a field beside it has the keyboard.
#pragma once

namespace wren {

// How many rows the key (Qt::Key) goes down, negative for up; a page has 'page' rows. 0 for other keys.
int RowsFor(int key, int page);

} // namespace wren
