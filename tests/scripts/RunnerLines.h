// The lines of a session that are for its runner: what happens to files while the editor runs. See README.md.
#pragma once

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <string>

class RunnerLines {
public:
    static bool IsOne(const std::string& line);

    // Throws when the line is wrong, or cannot be done.
    void Carry(const std::string& line);

    // Lets go of whoever still waits for a file, so that the editor can end. False when a file was still held.
    bool LetGo();

private:
    using Line = nlohmann::json;

    static void WriteFile(const Line& line);
    void Hold(const std::filesystem::path& file);
    void Release(const std::filesystem::path& file);

    std::map<std::filesystem::path, int> held; // the descriptors that hold them
};
