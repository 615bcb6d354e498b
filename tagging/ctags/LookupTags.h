// Turns what ctags finds declared in a source into tags for lookups.
#pragma once

#include "tagsfile/Tag.h"

#include <span>
#include <string_view>

namespace tagging {

// Texts as in the source, not as ctags escapes them.
struct DeclaredTag {
    std::string_view name;
    unsigned line = 0;
    char kind = 0;
    std::string_view scopeKind; // "class"
    std::string_view scope;     // "Outer::Inner"
    std::string_view whole;     // "class:Outer::Inner", if there is such a text
    bool scopedEnumeration = false;
};

// Whether readers can find such a name: they would skip or misread a line whose name begins with '!'.
bool CanBeTag(std::string_view name);
bool CanBeScope(std::string_view scope);

// Adds the tags of one source, whose names can be tags. Their texts are those of the declarations, or are kept in the
// result. See ReadCtagsOutput() for the scopes.
void AddLookupTags(std::span<const DeclaredTag> declared, tagsfile::Tags& result);

} // namespace tagging
