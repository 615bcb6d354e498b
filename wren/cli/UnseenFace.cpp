#include "wren/cli/UnseenFace.h"

#include <cstdio>

namespace wren {

void UnseenFace::Warn(const std::string& text)
{
    std::fprintf(stderr, "wren: %s\n", text.c_str());
}

} // namespace wren
