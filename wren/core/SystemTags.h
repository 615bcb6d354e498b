// The place of the system's tags file.
#pragma once

#include <string>

namespace wren {

// The file in that home directory, the only place where the plug-in looks for it; "" without a home.
std::string SystemTagsFile(const std::string& home);

// The path of the unfinished file that replaces it once complete.
std::string UnfinishedSystemTagsFile(const std::string& home);

// The directory of both, which only the host makes; "" without a home.
std::string SystemTagsDirectory(const std::string& home);

// Makes that directory. Returns "", or the failure as a notice for the user.
std::string MakeSystemTagsDirectory(const std::string& home);

// The notice about a tags file, the system's or another, that is not read; 'why' completes a sentence about it.
std::string UnreadNotice(const std::string& path, const std::string& why);

} // namespace wren
