// Where the system's tags file is.
#pragma once

#include <string>

namespace wren {

// The file in that home directory; "" for a home "", which is none. The plug-in looks for it there, and nowhere else.
std::string SystemTagsFile(const std::string& home);

// Of the file that takes the other's place once it is complete.
std::string UnfinishedSystemTagsFile(const std::string& home);

// The directory of both, which nobody makes but the host; "" for no home.
std::string SystemTagsDirectory(const std::string& home);

// Makes that directory. What went wrong, as a notice for the user; "" when it is there.
std::string MakeSystemTagsDirectory(const std::string& home);

// The notice of a tags file, the system's or another, that is not read; 'why' is the rest of a sentence about it.
std::string UnreadNotice(const std::string& path, const std::string& why);

} // namespace wren
