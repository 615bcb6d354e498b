#include "symbols/update/CacheLocation.h"

#include "base/Hash.h"
#include "base/Identifier.h"
#include "base/Paths.h"
#include "base/UserDirectories.h"

#include <cerrno>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace symbols {

namespace {

constexpr size_t kMostOfLeaf = 40; // the rest is told by the hash

// The last part of the root, for people who look into the cache.
std::string Readable(const std::string& root)
{
    std::string leaf = root.substr(root.rfind('/') + 1).substr(0, kMostOfLeaf);
    for (char& each : leaf)
        if (!base::IsIdentifierCharacter(each) && each != '-' && each != '+')
            each = '_';
    return leaf.empty() ? "root" : leaf;
}

base::Result<void> MakeDirectory(const std::string& path)
{
    if (::mkdir(path.c_str(), 0700) == 0 || errno == EEXIST)
        return {};
    if (errno != ENOENT)
        return base::SystemError("cannot make " + base::Shown(path));
    if (base::Result<void> above = MakeDirectory(base::DirectoryOf(path)); !above)
        return above;
    if (::mkdir(path.c_str(), 0700) == 0 || errno == EEXIST)
        return {};
    return base::SystemError("cannot make " + base::Shown(path));
}

} // namespace

std::string DirectoryOfIndex(const std::string& cache, const std::string& root, bool isSystem)
{
    char hash[20];
    std::snprintf(hash, sizeof hash, "-%016llx", static_cast<unsigned long long>(base::Fnv1a(root)));
    return cache + "/" + (isSystem ? "system-headers" : Readable(root) + hash);
}

std::string UsersIndexes()
{
    const std::string cache = base::CacheDirectory("declaration");
    return cache.empty() ? "" : cache + "/index";
}

base::Result<void> MakePrivateDirectory(const std::string& path)
{
    if (base::Result<void> made = MakeDirectory(path); !made)
        return made;
    struct stat status;
    if (::lstat(path.c_str(), &status) != 0)
        return base::SystemError("cannot use " + base::Shown(path));
    if (!S_ISDIR(status.st_mode) || status.st_uid != ::geteuid())
        return base::Error{base::Shown(path) + " is not a directory of this user"};
    if ((status.st_mode & 077) != 0 && ::chmod(path.c_str(), 0700) != 0)
        return base::SystemError("cannot use " + base::Shown(path));
    return {};
}

} // namespace symbols
