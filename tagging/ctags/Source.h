// A source on its way to ctags.
#pragma once

#include "base/Descriptor.h"
#include "tagsfile/Tag.h"

#include <cstddef>
#include <memory>
#include <string>

namespace tagging {

// How ctags is to take a source.
enum class Parser { ByName, C, Cplusplus };
inline constexpr size_t kParsers = 3;

struct Source {
    unsigned number = 0;
    std::string path;
    Parser parser = Parser::ByName;
    std::string name;                   // what ctags is given
    base::Descriptor text;              // what it reads there, unless it is the file itself; open for as long as it may
    tagsfile::Tags tags;                // those that it is not asked for
    std::unique_ptr<char[]> textOfTags; // of which their texts are parts
};

} // namespace tagging
