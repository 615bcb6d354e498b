// How far a name reaches, from the caret to the right and to the left: scopes and template arguments included, as in
// "Outer<int>::Inner::member".
#pragma once

class PluginInterface;

namespace scan {

// Where the name that 'offset' is in or before ends. A single ':' behind it belongs to it.
long NameEnd(PluginInterface* pi, long offset);

// Where the name that ends at 'end' starts.
long NameStart(PluginInterface* pi, long end);

} // namespace scan
