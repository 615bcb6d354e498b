// Where a name stands in its line. Indexes know only lines.
#pragma once

#include <string_view>

namespace wren {

// The column, in bytes from 1, of the first place in 'line' where 'name' stands and is not a part of a longer name. For
// a selector or an operator, the place of its first part. 1 when the line does not have it, as when a macro makes it.
unsigned NameColumn(std::string_view line, std::string_view name);

} // namespace wren
