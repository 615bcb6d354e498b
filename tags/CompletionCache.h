// Every symbol's name in the two tags files, sorted in memory, so that completion need not read files at each key
// stroke.
#pragma once

#include "tags/ScopeMarks.h"
#include "vetch/support/BLocker.h"

#include <memory>
#include <string>
#include <vector>

class TagFile;
class Tags;

// One half for the local tags file and one for the system's; only a half that is stale is loaded again, on a thread of
// its own. The document thread asks LoadIfNeeded() and, when it has said true, searches; meanwhile no load runs, so
// that a search needs no lock.
class CompletionCache {
public:
    CompletionCache() = default;
    ~CompletionCache();
    CompletionCache(const CompletionCache&) = delete;
    CompletionCache& operator=(const CompletionCache&) = delete;

    // True when the cache may be searched now. False while a load runs, for either half; with 'inBackground' this call
    // starts one when a half is stale, or leaves that to the next call when the system has no thread to
    // give. Without it nothing is ever loaded, and the cache is searched as it is.
    bool LoadIfNeeded(Tags& tags, bool inBackground);

    // The names that complete the pattern, in the order of bytes, each once, at most 'max'. A qualified pattern
    // ("Outer::na") gives names with their qualifiers, any other gives bare names; a pattern with a colon gives the
    // selectors that begin with it. 'out' is emptied first.
    void GetCompletions(const char* pattern, std::vector<std::string>& out, unsigned long max) const;

    // Those of one sorted list of entries (see NameAndQualifier), appended. 'max' is not looked at: what is cut off
    // must be the end of the names of both lists together.
    void GetCompletions(const char* pattern, std::vector<std::string>& out, unsigned long max,
                        const std::vector<char*>& entries) const;

    // The background thread's work; deletes both.
    void LoadSelf(TagFile* systemTags, TagFile* localTags);

    // Whether a tags file has to be read again that was read at 'time': only a later one, and one that has vanished
    // never, so that its names go on being offered. "" has never been read.
    static bool NeedToReload(const std::string& path, long time);

    // Whether a half is stale for these tags; forgets the path of such a half. With the lock held.
    bool NeedToReload(const Tags& tags);

    static void ClearCache(std::vector<char*>& entries); // frees them

    // Appends all entries of the file, then sorts and drops the duplicates. An unreadable file changes nothing; when
    // reading is cancelled meanwhile there are no entries at all.
    static void LoadSelf(TagFile& tagFile, std::vector<char*>& entries);

private:
    void StartLoading(std::unique_ptr<TagFile> systemTags, std::unique_ptr<TagFile> localTags);

    std::vector<char*> systemEntries; // the loading thread's while 'loading', else the document thread's
    std::vector<char*> localEntries;
    std::string systemPath; // where the entries are from; "" when they have to be loaded
    long systemTime = 0;
    std::string localPath;
    long localTime = 0;
    BLocker lock; // guards paths, times and flags
    bool loaded = false;
    bool loading = false;
    ScopeMarks systemMarks; // of the entries, and whosever they are
    ScopeMarks localMarks;
};
