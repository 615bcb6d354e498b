#include "vetch/storage/EntryRef.h"

#include "vetch/storage/Normalise.h"

EntryRef::EntryRef() : name(nullptr) {}

EntryRef::EntryRef(const char* path) : name(nullptr)
{
    if (path != nullptr)
        Assign(vetch::NormalisedPath(path));
}

EntryRef::EntryRef(const EntryRef& other) : name(nullptr)
{
    *this = other;
}

EntryRef& EntryRef::operator=(const EntryRef& other)
{
    if (this == &other)
        return *this;
    directory = other.directory;
    leaf = other.leaf;
    name = leaf.empty() ? nullptr : leaf.c_str();
    return *this;
}

EntryRef::~EntryRef() = default;

std::string EntryRef::Path() const
{
    const bool followsSlash = directory.empty() || directory == "/";
    return followsSlash ? directory + leaf : directory + "/" + leaf;
}

bool EntryRef::operator==(const EntryRef& other) const
{
    return directory == other.directory && leaf == other.leaf;
}

bool EntryRef::operator!=(const EntryRef& other) const
{
    return !(*this == other);
}

void EntryRef::Assign(const std::string& normalisedPath)
{
    directory = vetch::DirectoryPart(normalisedPath);
    leaf = vetch::LeafPart(normalisedPath);
    name = leaf.empty() ? nullptr : leaf.c_str();
}
