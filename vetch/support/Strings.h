// Text replacement, and the escapes by which paths travel through a shell and through tags files.
#pragma once

#include <string>

// Replace in place; the replacement is not searched again. An empty pattern replaces nothing.
void ReplaceAll(std::string& text, const char* pattern, const char* with);
void ReplaceFirst(std::string& text, const char* pattern, const char* with);

// A path as one word of a POSIX shell: a leading "~/" (which the shell expands), letters, digits and _ . / - + , : @ %
// = stay, every other byte below 0x80 gets a backslash, a line break becomes one in single quotes, bytes from 0x80 up
// stay.
std::string EscapedPath(const std::string& path);

// The inverse of EscapedPath: removes one backslash before each character, and leaves other text alone.
std::string DeEscaped(const std::string& text);

// Puts a backslash before each bare parenthesis of a command text, in place: one that stands outside quotes, is not
// escaped already and is not in a comment line. All else stays, so doing it twice is doing it once.
void ShellEscapeString(std::string& commands);
