// A source for ctags.
#pragma once

#include "base/Descriptor.h"

#include <cstddef>
#include <string>

namespace tagging {

// The parser that ctags uses for a source.
enum class Parser { ByName, C, Cplusplus };
inline constexpr size_t kParsers = 3;

struct Source {
    unsigned number = 0;
    std::string path;
    Parser parser = Parser::ByName;
    std::string name;      // the name that ctags is given
    size_t size = 0;       // bytes, if they are known
    base::Descriptor text; // what that name leads to, unless it is the file itself; stays open while ctags may read it
};

} // namespace tagging
