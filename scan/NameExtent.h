// The extent of a name, from the caret to the right and to the left, with scopes and template arguments, as in
// "Outer<int>::Inner::member".
#pragma once

namespace scan {

class Text;

// The end of the name at or before 'offset'. A single ':' behind the name belongs to it.
long NameEnd(const Text& text, long offset);

// The start of the name that ends at 'end'.
long NameStart(const Text& text, long end);

} // namespace scan
