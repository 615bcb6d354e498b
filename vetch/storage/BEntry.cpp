#include "vetch/storage/BEntry.h"

#include "vetch/storage/BPath.h"
#include "vetch/storage/EntryRef.h"
#include "vetch/storage/Normalise.h"

#include <cstdlib>
#include <memory>

#include <sys/stat.h>

namespace {

bool IsLink(const std::string& path)
{
    struct stat found;
    return lstat(path.c_str(), &found) == 0 && S_ISLNK(found.st_mode);
}

// The target of a link; the path itself when it is not a link or leads nowhere.
std::string Followed(const std::string& path)
{
    if (!IsLink(path))
        return path;
    const std::unique_ptr<char, void (*)(void*)> target(realpath(path.c_str(), nullptr), std::free);
    return target == nullptr ? path : target.get();
}

} // namespace

BEntry::BEntry(const char* path, bool traverse)
{
    SetTo(path, traverse);
}

BEntry::BEntry(const EntryRef* ref, bool traverse)
{
    SetTo(ref, traverse);
}

status_t BEntry::SetTo(const char* newPath, bool traverse)
{
    std::string normalised = newPath == nullptr ? "" : vetch::NormalisedPath(newPath);
    path = traverse ? Followed(normalised) : std::move(normalised);
    if (path.empty())
        status = B_ERROR;
    else
        status = Exists() ? B_OK : B_ENTRY_NOT_FOUND;
    return status;
}

status_t BEntry::SetTo(const EntryRef* ref, bool traverse)
{
    return SetTo(ref == nullptr ? nullptr : ref->Path().c_str(), traverse);
}

void BEntry::Unset()
{
    path.clear();
    status = B_ERROR;
}

status_t BEntry::InitCheck() const
{
    return status;
}

bool BEntry::Exists() const
{
    struct stat found;
    return GetStat(&found) == B_OK;
}

status_t BEntry::GetParent(BEntry* parent) const
{
    if (parent == nullptr)
        return B_ERROR;
    const bool isSet = !path.empty();
    const std::string parentPath = vetch::DirectoryPart(path); // first: 'parent' may be this
    parent->SetTo(parentPath.c_str());
    if (!isSet)
        return B_ERROR;
    return parentPath.empty() ? B_ENTRY_NOT_FOUND : B_OK;
}

status_t BEntry::GetPath(BPath* result) const
{
    if (result == nullptr)
        return B_ERROR;
    *result = BPath(path.c_str());
    return path.empty() ? B_ERROR : B_OK;
}

// Defined here, so that a path does not include entries.
BPath::BPath(const BEntry* entry)
{
    if (entry != nullptr)
        entry->GetPath(this);
}

status_t BEntry::GetRef(EntryRef* ref) const
{
    if (ref == nullptr)
        return B_ERROR;
    *ref = EntryRef(path.c_str());
    return path.empty() ? B_ERROR : B_OK;
}

status_t BEntry::GetStat(struct stat* result) const
{
    if (result == nullptr || path.empty())
        return B_ERROR;
    return lstat(path.c_str(), result) == 0 ? B_OK : B_ENTRY_NOT_FOUND;
}
