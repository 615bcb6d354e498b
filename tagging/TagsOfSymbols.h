// The tags that a tags file has of a source's symbols.
#pragma once

#include "tagging/ParsedSource.h"
#include "tagsfile/Tag.h"

#include <span>

namespace tagging {

enum class Prototypes { LeaveOut, Include };

// The same tags that Tagger finds in the source. 'symbols' are all of one source's, without locals. The tags' names are
// the symbols'; other texts are kept in the result.
tagsfile::Tags TagsOf(std::span<const Symbol> symbols, Prototypes prototypes);

} // namespace tagging
