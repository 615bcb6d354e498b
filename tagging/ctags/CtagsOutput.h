// What ctags says about one file, turned into tags as lookups read them.
#pragma once

#include "tagsfile/Tag.h"

#include <string>
#include <string_view>
#include <vector>

namespace tagging {

// The options with which ctags writes what ReadCtagsOutput reads; its own configuration files are left aside, so that
// the tags are the same for every user.
std::vector<std::string> OptionsForOutput();

// 'output' is ctags' lines for one file, in any order; the tags' texts are parts of it or are kept in the result. A
// line that cannot be read is stepped over: ctags may have died in the middle of it.
//
// - Scopes are those that lookups know ("class:", "namespace:", "struct:", "union:"), or none.
// - Anonymous parts ("__anon1234") are left out of scopes, and have no tags of their own: nobody can type them.
// - An enumerator has the scope in which it can be used: that of an unscoped enumeration is the one around it, that of
//   a scoped one is the enumeration, as "class:".
// Stateless; any thread.
tagsfile::Tags ReadCtagsOutput(std::string_view output);

} // namespace tagging
