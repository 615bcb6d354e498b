// All symbol names of the two tags files, sorted in memory: completion does not read files at each key stroke.
#pragma once

#include "tags/ScopeMarks.h"
#include "vetch/support/BLocker.h"

#include <memory>
#include <string>
#include <vector>

class TagFile;
class Tags;

// One half for the local tags file and one for the system's; only a stale half is reloaded, on a separate thread. The
// document thread calls LoadIfNeeded() and searches only after true. No load runs then, so a search needs no lock.
class CompletionCache {
public:
    CompletionCache() = default;
    ~CompletionCache();
    CompletionCache(const CompletionCache&) = delete;
    CompletionCache& operator=(const CompletionCache&) = delete;

    // True when the cache may be searched now. False while either half loads. With 'inBackground' a stale half starts a
    // load; if the system has no thread, the next call retries. Without it, never loads: the cache is searched as it
    // is.
    bool LoadIfNeeded(Tags& tags, bool inBackground);

    // The names that complete the pattern, in byte order, each once, at most 'max'. A qualified pattern ("Outer::na")
    // gives names with their qualifiers, any other gives bare names. A pattern with a colon gives the selectors that
    // begin with it. Empties 'out' first.
    void GetCompletions(const char* pattern, std::vector<std::string>& out, unsigned long max) const;

    // Appends those of one sorted list of entries (see NameAndQualifier). Ignores 'max': the limit applies to the names
    // of both lists together.
    void GetCompletions(const char* pattern, std::vector<std::string>& out, unsigned long max,
                        const std::vector<char*>& entries) const;

    // Runs on the background thread; deletes both.
    void LoadSelf(TagFile* systemTags, TagFile* localTags);

    // Whether to reread a tags file that was read at 'time': only a later one. A file that has vanished is not reread
    // and its names stay. "" was never read.
    static bool NeedToReload(const std::string& path, long time);

    // Whether a half is stale for these tags; clears the path of a stale half. With the lock held.
    bool NeedToReload(const Tags& tags);

    static void ClearCache(std::vector<char*>& entries); // frees them

    // Appends all entries of the file, then sorts and drops the duplicates. An unreadable file changes nothing; a
    // cancelled read leaves no entries.
    static void LoadSelf(TagFile& tagFile, std::vector<char*>& entries);

private:
    void StartLoading(std::unique_ptr<TagFile> systemTags, std::unique_ptr<TagFile> localTags);

    std::vector<char*> systemEntries; // used by the loading thread while 'loading', otherwise by the document thread
    std::vector<char*> localEntries;
    std::string systemPath; // source of the entries; "" when they must be loaded
    long systemTime = 0;
    std::string localPath;
    long localTime = 0;
    BLocker lock; // guards paths, times and flags
    bool loaded = false;
    bool loading = false;
    ScopeMarks systemMarks; // of the entries; same threads
    ScopeMarks localMarks;
};
