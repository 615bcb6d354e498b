#include "wren/cli/SystemTagsHome.h"

#include "wren/core/SystemTags.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <unistd.h>

namespace wren {

namespace fs = std::filesystem;

SystemTagsHome::SystemTagsHome(const std::string& tagsFile, std::string* error)
{
    if (tagsFile.empty())
        return;
    std::error_code problem;
    const fs::path file = fs::canonical(tagsFile, problem);
    if (problem || ::access(file.c_str(), R_OK) != 0) {
        *error = tagsFile + " cannot be read: " + (problem ? problem.message() : std::strerror(errno));
        return;
    }
    std::string pattern = (fs::temp_directory_path() / "wren-home-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        *error = pattern + " cannot be made: " + std::strerror(errno);
        return;
    }
    directory = pattern;
    fs::create_directories(SystemTagsDirectory(directory));
    fs::create_symlink(file, SystemTagsFile(directory));
    const char* home = std::getenv("HOME");
    hadHome = home != nullptr;
    formerHome = hadHome ? home : "";
    ::setenv("HOME", directory.c_str(), 1);
}

SystemTagsHome::~SystemTagsHome()
{
    if (directory.empty())
        return;
    if (hadHome)
        ::setenv("HOME", formerHome.c_str(), 1);
    else
        ::unsetenv("HOME");
    std::error_code ignored;
    fs::remove_all(directory, ignored);
}

} // namespace wren
