// The copy of a session's folder that the session runs in.
#pragma once

#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

constexpr const char* kDir = "$DIR"; // stands for the copy in the session's files

std::string Read(const std::filesystem::path& file);
void Write(const std::filesystem::path& file, const std::string& text);
std::vector<std::string> Lines(const std::string& text);
std::string Replaced(std::string text, const std::string& what, const std::string& with);
std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& directory);

// When a file was changed, so that a session does not depend on when it runs.
enum class Age { Older, Same, Newer, Newest };

// Newest is newer than all that this has dated before.
void SetAge(const std::filesystem::path& file, Age age);

// Throws std::runtime_error for what is none. "newer" in a session is the Newest.
Age AgeNamed(const std::string& name);

// Fills 'directory' from 'folder': see README.md.
void Prepare(const std::filesystem::path& folder, const std::filesystem::path& directory);
