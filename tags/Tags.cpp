#include "tags/Tags.h"

#include "tags/AutoLock.h"
#include "tags/NameAndQualifier.h"
#include "tags/PathCache.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/EntryRef.h"

Tags::Tags(const BEntry* localTags, const BEntry* systemTags, const std::string& pattern, bool checkDates)
    : local(localTags, pattern, checkDates), system(systemTags, pattern, checkDates)
{
    const AutoLock hold(PathCache::PathCacheLock());
    PathCache::LocalTagCache().FlushIfNeeded(localTags);
    PathCache::SystemTagCache().FlushIfNeeded(systemTags);
    NameAndQualifier::Split(pattern, namePattern, qualifierPattern);
}

bool Tags::Rewind()
{
    const AutoLock hold(PathCache::PathCacheLock());
    readingLocal = local.Rewind();
    PathCache::LocalTagCache().Rewind();
    if (readingLocal)
        return true;
    PathCache::SystemTagCache().Rewind();
    return system.Rewind();
}

void Tags::Done()
{
    local.Done();
    system.Done();
}

bool Tags::GoOnWithSystem()
{
    local.Done();
    readingLocal = false;
    return system.Rewind();
}

bool Tags::Next(std::string& name, std::string& qualifier)
{
    if (readingLocal) {
        if (local.Next(name, qualifier))
            return true;
        if (!GoOnWithSystem())
            return false;
    }
    if (system.Next(name, qualifier))
        return true;
    system.Done();
    return false;
}

bool Tags::Next(std::string& name, std::string& qualifier, char& kind, EntryRef& ref, int& line, bool& isSystem)
{
    return NextMatch(name, qualifier, kind, ref, line, isSystem, false, TagFile::AnyMatch());
}

// After a local match a search continues with 'stopAtMismatch' set, also from the system file's first line. So it finds
// system tags only if nothing local matched: near tags hide far ones.
template <class Match>
bool Tags::NextMatch(std::string& name, std::string& qualifier, char& kind, EntryRef& ref, int& line, bool& isSystem,
                     bool stopAtMismatch, Match match)
{
    if (readingLocal) {
        isSystem = false;
        if (local.NextMatch(name, qualifier, kind, ref, line, stopAtMismatch, match))
            return true;
        if (!GoOnWithSystem())
            return false;
    }
    isSystem = true;
    if (system.NextMatch(name, qualifier, kind, ref, line, stopAtMismatch, match))
        return true;
    system.Done();
    return false;
}

template bool Tags::NextMatch(std::string&, std::string&, char&, EntryRef&, int&, bool&, bool, TagFile::ExactMatch);
template bool Tags::NextMatch(std::string&, std::string&, char&, EntryRef&, int&, bool&, bool, TagFile::PartialMatch);
template bool Tags::NextMatch(std::string&, std::string&, char&, EntryRef&, int&, bool&, bool, TagFile::AnyMatch);

bool Tags::NextFileMatch(std::string& path)
{
    const AutoLock hold(PathCache::PathCacheLock());
    const char* found = nullptr;
    if (readingLocal) {
        // An unreadable local file has no paths; the search continues.
        PathCache::LocalTagCache().LoadIfNeeded(local, false);
        found = PathCache::LocalTagCache().FindNext(namePattern.c_str());
        if (found == nullptr && !GoOnWithSystem())
            return false;
    }
    if (found == nullptr) {
        if (!PathCache::SystemTagCache().LoadIfNeeded(system, true))
            return false;
        found = PathCache::SystemTagCache().FindNext(namePattern.c_str());
    }
    if (found == nullptr) {
        system.Done();
        return false;
    }
    path = found;
    return true;
}
