#include "wren/cli/HeadlessFace.h"

#include "wren/core/TerminalText.h"

#include <cstdio>
#include <unistd.h>

namespace wren {

void HeadlessFace::Warn(const std::string& text)
{
    std::fprintf(stderr, "wren: %s\n", ShownOn(STDERR_FILENO, text).c_str());
}

} // namespace wren
