// A list of directories, as it is stored and as the panel shows it: one blank between two of them, or one line each.
//
// A backslash keeps the byte after it from becoming a separator, and stays: directories with a blank in their name
// survive both ways.
#pragma once

#include <string>

// Stored directories as the panel shows them: every byte up to the blank, and every one from 0x80 up, becomes a line
// break.
std::string SystemDirectoriesStringForControl(const std::string& stored);

// Directories as the user wrote them, ready to be stored: control characters, every byte from 0x80 up, ':' and ','
// become blanks.
std::string SystemDirectoriesStringForStore(const std::string& written);
