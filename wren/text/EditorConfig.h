// What the .editorconfig files around a file say of its text (https://spec.editorconfig.org).
#pragma once

#include "base/Result.h"
#include "wren/text/LineEnds.h"
#include "wren/text/TextEncoding.h"

#include <optional>
#include <string>
#include <string_view>

namespace wren {

struct EditorConfig {
    std::optional<bool> usesTabs;
    std::optional<int> level;       // columns of one level of indentation
    std::optional<int> tabWidth;    // columns
    std::optional<int> longestLine; // columns
    std::optional<LineEnds> ends;   // of all lines, when the text is saved
    std::optional<TextEncoding> encoding;
    bool trimsBlanks = false;  // at the ends of lines, when the text is saved
    bool endsLastLine = false; // with a line end, when the text is saved

    bool operator==(const EditorConfig&) const = default;
};

// Asks the program "editorconfig", which is killed when it takes too long: patterns come from the tree, and a stranger
// may have written them. Nothing is asked when no directory from the file's up has such a file. Fails when one is not a
// regular file or too long, and when the program is missing or fails. 'path' is absolute and need not exist. Blocks:
// half a second at most, usually some milliseconds. Any thread.
base::Result<EditorConfig> EditorConfigFor(const std::string& path);

// The program's output: lines "name=value". Names and values that are not known count as absent.
EditorConfig ReadEditorConfig(std::string_view output);

} // namespace wren
