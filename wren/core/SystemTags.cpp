#include "wren/core/SystemTags.h"

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

} // namespace wren
