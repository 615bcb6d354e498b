#include "tags/MatchText.h"

#include "tagsfile/Kinds.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/Home.h"
#include "vetch/support/ShellEscape.h"

#include <algorithm>
#include <cstring>

namespace {

bool SameName(const EntryRef* a, const EntryRef* b)
{
    if (a->name == nullptr || b->name == nullptr)
        return a->name == b->name;
    return std::strcmp(a->name, b->name) == 0;
}

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

} // namespace

std::string MatchText(const TagData& match, bool showDirectory, const std::string& home)
{
    const std::string leaf = match.file.name == nullptr ? "" : match.file.name;
    const std::string symbol = Prefix(match.kind, match.qualifier) + match.name;
    if (!showDirectory)
        return symbol + " - " + leaf;
    return symbol + " : " + leaf + " - " + MakeDisplayPath(DirectoryOf(match.file), home);
}

bool FileNamesAreAmbiguous(const std::vector<TagData>& matches)
{
    std::vector<const EntryRef*> files;
    files.reserve(matches.size());
    for (const TagData& match : matches)
        files.push_back(&match.file);
    std::sort(files.begin(), files.end(), MatchEntryName);
    const auto sameNameElsewhere = [](const EntryRef* a, const EntryRef* b) { return SameName(a, b) && *a != *b; };
    return std::adjacent_find(files.begin(), files.end(), sameNameElsewhere) != files.end();
}

bool MatchEntryName(const EntryRef* a, const EntryRef* b)
{
    if (a->name == nullptr)
        return false;
    return b->name == nullptr || std::strcmp(a->name, b->name) < 0;
}

std::string MakeDisplayPath(const std::string& path)
{
    return MakeDisplayPath(path, Home());
}

std::string MakeDisplayPath(const std::string& path, const std::string& home)
{
    // Replaces the first occurrence wherever it is: a home directory in the middle of a path is shortened too.
    std::string shortened = path;
    ReplaceFirst(shortened, home.c_str(), "~/");
    ReplaceFirst(shortened, "/System/Library/Frameworks/", "/Sys...ks/");
    return shortened;
}
