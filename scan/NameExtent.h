// How far a name reaches, from the caret to the right and to the left: scopes and template arguments included, as in
// "Outer<int>::Inner::member".
#pragma once

namespace scan {

class Text;

// Where the name that 'offset' is in or before ends. A single ':' behind it belongs to it.
long NameEnd(const Text& text, long offset);

// Where the name that ends at 'end' starts.
long NameStart(const Text& text, long end);

} // namespace scan
