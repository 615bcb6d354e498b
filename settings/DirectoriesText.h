// A list of directories: stored with one blank between two of them, displayed one a line.
//
// A backslash keeps the next byte from becoming a separator, and stays: directories with a blank in their name survive
// both conversions.
#pragma once

#include <string>

// Stored directories for the panel: every byte up to the blank, and every byte from 0x80 up, becomes a line break.
std::string SystemDirectoriesStringForControl(const std::string& stored);

// The user's directories for storage: control characters, every byte from 0x80 up, ':' and ',' become blanks.
std::string SystemDirectoriesStringForStore(const std::string& written);
