#include "vetch/storage/BDirectory.h"

#include "vetch/storage/BEntry.h"
#include "vetch/storage/BPath.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Checks access with the effective user, and follows links.
status_t SearchableDirectory(const std::string& path)
{
    struct stat found;
    if (path.empty())
        return B_ERROR;
    if (stat(path.c_str(), &found) != 0)
        return errno == ENOENT || errno == ENOTDIR ? B_ENTRY_NOT_FOUND : B_ERROR;
    const bool searchable = faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0;
    return S_ISDIR(found.st_mode) && searchable ? B_OK : B_ERROR;
}

} // namespace

BDirectory::BDirectory(const BEntry* entry) : BDirectory(BPath(entry).Path()) {}

BDirectory::BDirectory(const char* directoryPath) : path(BPath(directoryPath).Path()), status(SearchableDirectory(path))
{
    if (status != B_OK)
        path.clear();
}

status_t BDirectory::InitCheck() const
{
    return status;
}

status_t BDirectory::FindEntry(const char* name, BEntry* entry, bool traverse) const
{
    if (name == nullptr || entry == nullptr)
        return B_ERROR;
    const bool isLeaf = *name != '\0' && std::strchr(name, '/') == nullptr;
    if (!isLeaf || entry->SetTo(this, name, traverse) != B_OK)
        entry->Unset();
    if (status != B_OK)
        return B_ERROR;
    return entry->InitCheck() == B_OK ? B_OK : B_ENTRY_NOT_FOUND;
}

bool BDirectory::IsRootDirectory() const
{
    return path == "/";
}

status_t BDirectory::GetEntry(BEntry* entry) const
{
    return entry == nullptr ? B_ERROR : entry->SetTo(path.c_str());
}

// Defined here, so that an entry does not include directories.

BEntry::BEntry(const BDirectory* directory, const char* leaf, bool traverse)
{
    SetTo(directory, leaf, traverse);
}

status_t BEntry::SetTo(const BDirectory* directory, const char* leaf, bool traverse)
{
    const bool usable = directory != nullptr && leaf != nullptr && *leaf != '\0';
    if (usable && *leaf == '/')
        return SetTo(leaf, traverse);
    if (usable && directory->InitCheck() == B_OK)
        return SetTo((directory->path + "/" + leaf).c_str(), traverse);
    Unset();
    return status;
}
