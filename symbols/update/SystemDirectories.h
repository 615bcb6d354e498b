// Where the system's headers are.
#pragma once

#include <string>
#include <vector>

namespace symbols {

// The existing ones of "/usr/include", "/usr/local/include" and the include directory of the newest gcc for each
// machine. Absolute, none inside another.
std::vector<std::string> SystemDirectories();

} // namespace symbols
