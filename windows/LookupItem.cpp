#include "windows/LookupItem.h"

#include "tagsfile/Kinds.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/Home.h"
#include "vetch/support/Strings.h"

namespace {

// Functions, prototypes and typedefs show their scope; other kinds show their kind, or nothing.
std::string Prefix(char kind, const std::string& qualifier)
{
    const tagsfile::Kind known = tagsfile::KindOf(kind);
    switch (known.prefix) {
    case tagsfile::Kind::Prefix::Word:
        return std::string(known.word) + " ";
    case tagsfile::Kind::Prefix::Scope:
        return qualifier.empty() ? "" : qualifier + "::";
    case tagsfile::Kind::Prefix::None:
        return "";
    }
    return "";
}

std::string DirectoryOf(const EntryRef& file)
{
    BEntry parent;
    EntryRef directory;
    if (BEntry(&file, true).GetParent(&parent) == B_OK)
        parent.GetRef(&directory);
    return directory.Path();
}

std::string ItemText(const DeclarationEntry& entry, bool showDirectory)
{
    const std::string leaf = entry.file.name == nullptr ? "" : entry.file.name;
    const std::string symbol = Prefix(entry.kind, entry.qualifier) + entry.name;
    if (!showDirectory)
        return symbol + " - " + leaf;
    return symbol + " : " + leaf + " - " + MakeDisplayPath(DirectoryOf(entry.file));
}

} // namespace

LookupItem::LookupItem(const std::string& name, const std::string& qualifier, char kind, int line, const EntryRef& file,
                       bool showDirectory)
    : BStringItem(""), entry{name, qualifier, file, line, kind}
{
    SetText(ItemText(entry, showDirectory).c_str());
}

LookupItem::~LookupItem() = default;

std::string MakeDisplayPath(const std::string& path)
{
    // Replaces the first occurrence wherever it is: a home directory in the middle of a path is shortened too.
    std::string shortened = path;
    ReplaceFirst(shortened, Home().c_str(), "~/");
    ReplaceFirst(shortened, "/System/Library/Frameworks/", "/Sys...ks/");
    return shortened;
}
