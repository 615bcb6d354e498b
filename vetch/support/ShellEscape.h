// Text replacement, and the escapes for paths in shells and in tags files.
#pragma once

#include <string>

// Replace in place; the replacement is not searched again. An empty pattern replaces nothing.
void ReplaceAll(std::string& text, const char* pattern, const char* with);
void ReplaceFirst(std::string& text, const char* pattern, const char* with);

// A path as one word of a POSIX shell. Unchanged: a leading "~/" (which the shell expands), letters, digits, _ . / - +
// , : @ % = and bytes from 0x80 up. A line break gets single quotes; every other byte gets a backslash.
std::string EscapedPath(const std::string& path);

// The inverse of EscapedPath: removes one backslash before each character; other text is unchanged.
std::string DeEscaped(const std::string& text);

// Puts a backslash before each bare parenthesis of a command text, in place: one outside quotes and comment lines that
// is not escaped yet. A second call changes nothing.
void ShellEscapeString(std::string& commands);
