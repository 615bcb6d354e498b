// A directory for the lifetime of a test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

class TempDirectory {
public:
    TempDirectory()
    {
        std::string pattern =
            (std::filesystem::canonical(std::filesystem::temp_directory_path()) / "wren-XXXXXX").string();
        path = ::mkdtemp(pattern.data());
    }
    ~TempDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    TempDirectory(const TempDirectory&) = delete;
    TempDirectory& operator=(const TempDirectory&) = delete;

    const std::string& Path() const { return path; }
    std::string operator/(const std::string& leaf) const { return path + "/" + leaf; }

    // Writes a file and makes its directories; returns its path.
    std::string Write(const std::string& leaf, const std::string& content) const
    {
        const std::string file = path + "/" + leaf;
        std::filesystem::create_directories(std::filesystem::path(file).parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }

private:
    std::string path;
};
