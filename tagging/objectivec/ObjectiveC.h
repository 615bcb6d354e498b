// Objective-C: what its constructs declare, and what is left of a source for a parser of C or C++.
#pragma once

#include "tagsfile/Tag.h"

#include <set>
#include <string>
#include <string_view>

namespace tagging {

struct ObjectiveCSource {
    tagsfile::Tags tags; // interfaces, implementations, categories, protocols, methods, properties, instance variables

    // The source without them: as many lines, with the C and C++ declarations where they were, also those between
    // methods and inside an implementation. Method bodies are blank. It is the text itself when there is no
    // Objective-C. "NS_ENUM(type, Name)" has become "enum Name", and the macros to be ignored are blank.
    std::string rest;
};

// Whether an "@interface", "@implementation", "@protocol" or "@class" may stand in the text, in code or in a comment:
// one pass of memchr, for sorting out the many headers that are plain C and C++.
bool MayHaveObjectiveC(std::string_view text);

// Reads any text, damaged and unfinished ones too. 'ignored' are macros to pass over, as ctags' -I has them: "NAME", or
// "NAME+" when arguments in parentheses go with it. Stateless; any thread.
//
// - A selector's line is that of its first part.
// - Scopes are "class:Name", of protocols and categories too; a category's tag has the scope of its class, and so has
//   the implementation of a category. A class extension has no name, hence no tag; what it declares belongs to its
//   class.
// - Both branches of an #if are read, except for "#if 0": which one counts is not known here.
ObjectiveCSource ReadObjectiveC(std::string_view text, const std::set<std::string>& ignored);

} // namespace tagging
