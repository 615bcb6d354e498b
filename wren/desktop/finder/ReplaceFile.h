// Replacing matches in a file that is not open.
#pragma once

#include "wren/search/Replacement.h"

#include <string>
#include <vector>

namespace wren {

// Does the edits in the file, as saving from the editor would: its permissions, and the old text after a crash, are
// kept. Returns why it was not done, for people; "" when it was. Refused is a file that has changed since it was
// searched, that is a link or lies outside of the searched directory by now, and a text that is not UTF-8 when letters
// outside of ASCII come into it. Blocks.
std::string ReplaceInFile(const FileReplacements& found, const std::vector<Replacement>& edits);

} // namespace wren
