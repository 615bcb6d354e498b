#include "vetch/storage/Home.h"

#include <cstdlib>

std::string Home()
{
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == '\0')
        return "";
    std::string path = home;
    while (path.ends_with('/'))
        path.pop_back();
    return path + "/";
}
