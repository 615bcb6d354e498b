// Turns the output of ctags for one file into tags for lookups.
#pragma once

#include "tagsfile/Tag.h"

#include <string>
#include <string_view>
#include <vector>

namespace tagging {

// The options for output that ReadCtagsOutput can read. They exclude ctags' configuration files, so that every user
// gets the same tags.
std::vector<std::string> OptionsForOutput();

// 'output' is ctags' lines for one file, in any order. The tags' texts are parts of it, or are kept in the result.
// Unreadable lines are skipped: ctags may have died in the middle of one.
//
// - Scopes are those that lookups know ("class:", "namespace:", "struct:", "union:"), or none.
// - Anonymous parts ("__anon1234") are removed from scopes, and have no tags: nobody can type them.
// - An enumerator has the scope in which it is used: the scope around an unscoped enumeration, or a scoped
//   enumeration itself, as "class:".
// Stateless; any thread.
tagsfile::Tags ReadCtagsOutput(std::string_view output);

} // namespace tagging
