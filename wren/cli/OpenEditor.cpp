#include "wren/cli/OpenEditor.h"

#include "base/ExitStatus.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <unistd.h>

namespace wren {

namespace {

namespace fs = std::filesystem;

constexpr auto kOwnWords = std::to_array<std::string_view>(
    {"lookup", "tags", "complete", "script", "lsp", "definition", "declaration", "references", "implementations",
     "find", "outline", "explain", "graph", "index", "--help", "-h", "--version"});

// The editor beside this program, or at its installed place.
fs::path EditorProgram()
{
    std::error_code unknown;
    const fs::path here = fs::read_symlink("/proc/self/exe", unknown).parent_path();
    const fs::path beside = here / "wren-desktop";
    return fs::exists(beside, unknown) ? beside : here.parent_path() / "lib/wren/wren-desktop";
}

} // namespace

bool AsksForEditor(int count, char** words)
{
    return count < 2 || std::ranges::find(kOwnWords, std::string_view(words[1])) == kOwnWords.end();
}

int OpenEditor(char** words)
{
    const fs::path program = EditorProgram();
    ::execv(program.c_str(), words);
    std::fprintf(stderr,
                 "wren: the editor cannot be started: %s: %s\n"
                 "Install Wren's desktop editor, or use the commands that need none: wren lookup and wren complete.\n",
                 program.c_str(), std::strerror(errno));
    return base::exit_status::kUnavailable;
}

} // namespace wren
