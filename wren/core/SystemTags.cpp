#include "wren/core/SystemTags.h"

#include <filesystem>
#include <system_error>

namespace wren {

namespace {

std::string Below(const std::string& home, const char* path)
{
    if (home.empty())
        return "";
    return home + (home.ends_with('/') ? "" : "/") + path;
}

} // namespace

std::string SystemTagsFile(const std::string& home)
{
    return Below(home, "Library/Caches/SystemHeaderTags");
}

std::string UnfinishedSystemTagsFile(const std::string& home)
{
    return Below(home, "Library/Caches/SystemHeaderTags.temp");
}

std::string SystemTagsDirectory(const std::string& home)
{
    return Below(home, "Library/Caches");
}

std::string MakeSystemTagsDirectory(const std::string& home)
{
    if (home.empty())
        return "there is no home directory: system tags have no place";
    std::error_code error;
    std::filesystem::create_directories(SystemTagsDirectory(home), error);
    return error ? "cannot make " + SystemTagsDirectory(home) + ": " + error.message() : "";
}

std::string UnreadNotice(const std::string& path, const std::string& why)
{
    return path + " is not read: " + why + "; remove it, or make the tags again";
}

} // namespace wren
