// Which directory counts as the project of a text.
#pragma once

#include <string>

namespace wren {

class Projects;

// The root of the text's project; its own directory when it is in none; the directory that the program runs in for a
// text without a file, whose path is not absolute. Reads directories; for a question's thread.
std::string ProjectOf(const std::string& path, Projects& projects);

} // namespace wren
