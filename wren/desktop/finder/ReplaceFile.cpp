#include "wren/desktop/finder/ReplaceFile.h"

#include "base/Utf8.h"
#include "wren/core/Documents.h"
#include "wren/core/TextFile.h"

#include <algorithm>
#include <filesystem>

namespace wren {

namespace {

namespace fs = std::filesystem;

// The tree may be a stranger's, who may put links into it between the search and the replacement.
bool IsPlainFileBelow(const std::string& root, const std::string& path)
{
    std::error_code unknown;
    if (fs::symlink_status(path, unknown).type() != fs::file_type::regular)
        return false;
    const std::string real = fs::canonical(path, unknown);
    const std::string top = fs::canonical(root, unknown);
    return !real.empty() && !top.empty() && real.starts_with(top == "/" ? top : top + "/");
}

} // namespace

std::string ReplaceInFile(const FileReplacements& found, const std::vector<Replacement>& edits)
{
    if (!IsPlainFileBelow(found.root, found.path))
        return found.path + " is no longer a file of the searched directory";
    std::string error;
    const std::optional<std::string> text = ReadWholeFile(found.path, &error);
    if (!text)
        return error;
    if (!IsTextOf(found, *text))
        return found.path + " has changed since the search";
    const bool isPlain = std::ranges::all_of(edits, [](const Replacement& edit) { return base::IsAscii(edit.with); });
    if (!isPlain && !base::IsValidUtf8(*text))
        return found.path + " is not UTF-8, as the replacement is";
    return WriteWholeFile(found.path, WithReplacements(*text, edits), &error) ? "" : error;
}

} // namespace wren
