// One tag, in the form that lookups and completion read.
#pragma once

#include "tagsfile/Kinds.h"

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace tagsfile {

// The creator of the tag owns the texts. They contain no tabs and no line breaks.
struct Tag {
    std::string_view name;
    unsigned line = 0; // from 1
    char kind = 0;
    std::string_view scope; // "class:Outer::Inner", "namespace:", "struct:" or "union:" alike; "" for none
};

// Tags, with storage for texts made for them. Moving keeps the texts in place; copying would not.
struct Tags {
    std::vector<Tag> tags;
    std::deque<std::string> texts;

    Tags() = default;
    Tags(Tags&&) = default;
    Tags& operator=(Tags&&) = default;
    Tags(const Tags&) = delete;
    Tags& operator=(const Tags&) = delete;

    // A copy of the text that lives as long as the tags.
    std::string_view Keep(std::string text) { return texts.emplace_back(std::move(text)); }
};

} // namespace tagsfile
