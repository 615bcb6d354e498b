#include "tags/CompletionCache.h"

#include "scan/Predicates.h"
#include "tags/AutoLock.h"
#include "tags/NameAndQualifier.h"
#include "tags/SortedStrings.h"
#include "tags/Tags.h"
#include "vetch/support/Cancellation.h"
#include "vetch/support/FThread.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <sys/stat.h>

namespace {

using Entries = std::vector<char*>;
using Entry = Entries::const_iterator;

constexpr size_t kUsualLocalEntries = 100000;
constexpr size_t kUsualSystemEntries = 300000;

constexpr auto Less = NameAndQualifier::CompareCompletionCacheEntries;

bool SameName(const char* a, const char* b)
{
    return std::strcmp(a, b) == 0;
}

bool NamesInOrder(const char* a, const char* b)
{
    return std::strcmp(a, b) <= 0;
}

bool IsEntryOf(const char* entry, const std::string& name, const std::string& qualifier)
{
    return name == entry && qualifier == entry + name.length() + 1;
}

// The entries of a tags file are usually sorted by name. Then only the qualifiers of each name need sorting, which is
// much faster.
void Sort(Entries& entries)
{
    const auto disorder = std::adjacent_find(entries.begin(), entries.end(),
                                             [](const char* a, const char* b) { return !NamesInOrder(a, b); });
    if (disorder != entries.end()) {
        SortUnlessCancelled(entries, Less);
        return;
    }
    for (auto name = entries.begin(); name != entries.end();) {
        const auto next = std::find_if(name, entries.end(), [&](const char* entry) { return !SameName(*name, entry); });
        std::sort(name, next, Less);
        name = next;
    }
}

// The end of the entries with the first one's name. Some names stand in ten thousand scopes.
Entry EndOfName(Entry first, Entry last)
{
    std::ptrdiff_t step = 1;
    while (step < last - first && SameName(*first, first[step]))
        step *= 2;
    const Entry known = first + step / 2;
    return std::upper_bound(known, first + std::min(step, last - first), *first,
                            [](const char* name, const char* entry) { return std::strcmp(name, entry) < 0; });
}

// The entries that begin with a pattern, with any qualifier: two bisections.
std::pair<Entry, Entry> Range(const char* pattern, const Entries& entries)
{
    if (IsObjCPattern(pattern))
        return std::equal_range(entries.begin(), entries.end(), pattern, ObjCMethodMatch(pattern));
    std::string name;
    std::string qualifier;
    NameAndQualifier::Split(pattern, name, qualifier);
    // The order compares as many characters as the name has, so the search uses the name, not the pattern.
    return std::equal_range(entries.begin(), entries.end(), name.c_str(), NameAndQualifier::PartialMatchLess(pattern));
}

// "" for a pattern without a qualifier.
std::string QualifierOf(const char* pattern)
{
    std::string name;
    std::string qualifier;
    if (!IsObjCPattern(pattern))
        NameAndQualifier::Split(pattern, name, qualifier);
    return qualifier;
}

// The first names in byte order, each once, from any number in any order.
class FirstNames {
public:
    FirstNames(std::vector<std::string>& names, size_t most) : names(names), most(most) {}

    void Add(std::string name)
    {
        if (full && name >= names[most - 1])
            return;
        names.push_back(std::move(name));
        // Keeps twice the limit, so that each name is sorted a few times only.
        if (names.size() > most && names.size() - most > most)
            Cut();
    }

    void Cut()
    {
        std::sort(names.begin(), names.end());
        names.erase(std::unique(names.begin(), names.end()), names.end());
        if (names.size() > most)
            names.resize(most);
        full = most > 0 && names.size() == most;
    }

private:
    std::vector<std::string>& names;
    const size_t most;
    bool full = false; // the last of 'most' names is known; they are sorted
};

// From a sorted list, whose names are in their final order: takes at most 'most'.
void AddNames(const char* pattern, const Entries& entries, size_t most, FirstNames& out)
{
    auto [entry, last] = Range(pattern, entries);
    for (size_t count = 0; entry != last && count < most; ++count) {
        out.Add(*entry);
        entry = EndOfName(entry, last);
    }
}

// The order of qualified names differs, so any entry may be among the first.
void AddQualified(const char* pattern, const Entries& entries, const ScopeMarks& marks, FirstNames& out)
{
    const std::string qualifier = QualifierOf(pattern);
    const NameAndQualifier::MatchQualifier accepts(pattern);
    const auto [first, last] = Range(pattern, entries);
    const size_t end = last - entries.begin();
    for (size_t i = marks.Find(qualifier, first - entries.begin(), end); i != end;
         i = marks.Find(qualifier, i + 1, end))
        if (accepts(entries[i]))
            out.Add(NameAndQualifier::JoinFromEntry(entries[i]));
}

} // namespace

CompletionCache::~CompletionCache()
{
    ClearCache(systemEntries);
    ClearCache(localEntries);
}

void CompletionCache::ClearCache(Entries& entries)
{
    for (char* entry : entries)
        std::free(entry);
    entries.clear();
}

bool CompletionCache::NeedToReload(const std::string& path, long time)
{
    if (path.empty())
        return true;
    struct stat status;
    return stat(path.c_str(), &status) == 0 && status.st_mtime > time;
}

bool CompletionCache::NeedToReload(const Tags& tags)
{
    if (!loaded)
        return true;
    const std::string newLocalPath = tags.Local().Path().Path();
    if (NeedToReload(systemPath, systemTime))
        systemPath.clear();
    if (NeedToReload(localPath, localTime))
        localPath.clear();
    // All documents share the system's tags file, so only the local path is compared. If there is no local file any
    // more, both paths are empty below and no load starts: the old names stay.
    if (!localPath.empty() && localPath != newLocalPath)
        localPath.clear();
    if (systemPath.empty())
        return true;
    return localPath.empty() != newLocalPath.empty();
}

bool CompletionCache::LoadIfNeeded(Tags& tags, bool inBackground)
{
    const AutoLock hold(lock);
    if (loading)
        return false;
    // Called even without a load: it clears the paths of stale halves.
    if (!NeedToReload(tags) || !inBackground)
        return true;
    StartLoading(std::make_unique<TagFile>(tags.System()), std::make_unique<TagFile>(tags.Local()));
    return false;
}

// If no thread starts, the cache is unchanged and the next key stroke retries.
void CompletionCache::StartLoading(std::unique_ptr<TagFile> systemTags, std::unique_ptr<TagFile> localTags)
{
    loading = true;
    try {
        FThread::Run<CompletionCache, TagFile*, TagFile*>(&CompletionCache::LoadSelf, this, systemTags.get(),
                                                          localTags.get());
        static_cast<void>(systemTags.release()); // the thread owns it
        static_cast<void>(localTags.release());
    } catch (const std::exception&) {
        loading = false;
    }
}

void CompletionCache::LoadSelf(TagFile* systemTags, TagFile* localTags)
{
    const std::unique_ptr<TagFile> systemOwner(systemTags);
    const std::unique_ptr<TagFile> localOwner(localTags);
    localEntries.reserve(kUsualLocalEntries);
    systemEntries.reserve(kUsualSystemEntries);
    // Before reading: a file written meanwhile is later than this and is reread the next time.
    const long newSystemTime = systemTags->TagTime();
    const long newLocalTime = localTags->TagTime();

    // No other thread writes the paths while this one runs.
    const bool loadsLocal = localPath.empty();
    const bool loadsSystem = systemPath.empty();
    if (loadsLocal) {
        ClearCache(localEntries);
        LoadSelf(*localTags, localEntries);
        localMarks.Make(localEntries);
    }
    if (loadsSystem) {
        ClearCache(systemEntries);
        LoadSelf(*systemTags, systemEntries);
        systemMarks.Make(systemEntries);
    }

    const AutoLock hold(lock);
    loading = false;
    if (vetch::ReadingIsCancelled())
        return; // its halves are still stale
    // An unreadable file counts as loaded, or each key stroke would retry.
    if (loadsLocal) {
        localPath = localTags->Path().Path();
        localTime = newLocalTime;
    }
    if (loadsSystem) {
        systemPath = systemTags->Path().Path();
        systemTime = newSystemTime;
    }
    loaded = true;
}

void CompletionCache::LoadSelf(TagFile& tagFile, Entries& entries)
{
    if (!tagFile.Rewind())
        return;
    std::string name;
    std::string qualifier;
    try {
        while (tagFile.Next(name, qualifier)) {
            // Skips adjacent overloads, which would be dropped later.
            if (!entries.empty() && IsEntryOf(entries.back(), name, qualifier))
                continue;
            entries.push_back(nullptr); // first, so that an entry is not lost without memory for its slot
            entries.back() = NameAndQualifier::NewEntry(name.c_str(), static_cast<int>(name.length()),
                                                        qualifier.c_str(), static_cast<int>(qualifier.length()));
        }
    } catch (const std::bad_alloc&) {
        // No names until the file changes. A part would look like all of them, and a retry at each key stroke would
        // exhaust the system's memory.
        ClearCache(entries);
        entries.shrink_to_fit();
    }
    tagFile.Done();
    if (!vetch::ReadingIsCancelled())
        Sort(entries);
    if (vetch::ReadingIsCancelled())
        ClearCache(entries); // a part would look like all
    const auto dropped = malloced_unique(entries.begin(), entries.end(), NameAndQualifier::MatchCompletionCacheEntries);
    std::for_each(dropped, entries.end(), std::free);
    entries.erase(dropped, entries.end());
}

void CompletionCache::GetCompletions(const char* pattern, std::vector<std::string>& out, unsigned long max) const
{
    out.clear();
    FirstNames first(out, max);
    if (QualifierOf(pattern).empty()) {
        AddNames(pattern, localEntries, max, first);
        AddNames(pattern, systemEntries, max, first);
    } else {
        AddQualified(pattern, localEntries, localMarks, first);
        AddQualified(pattern, systemEntries, systemMarks, first);
    }
    first.Cut();
}

void CompletionCache::GetCompletions(const char* pattern, std::vector<std::string>& out, unsigned long,
                                     const Entries& entries) const
{
    const auto [first, last] = Range(pattern, entries);
    const bool isQualified = !QualifierOf(pattern).empty();
    const NameAndQualifier::MatchQualifier accepts(pattern);
    for (Entry entry = first; entry != last; ++entry)
        if (!isQualified)
            out.emplace_back(*entry);
        else if (accepts(*entry))
            out.push_back(NameAndQualifier::JoinFromEntry(*entry));
}
