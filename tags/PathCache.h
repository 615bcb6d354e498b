// The paths in one tags file, sorted and unique.
#pragma once

#include "vetch/support/BLocker.h"

#include <ctime>
#include <memory>
#include <string>
#include <vector>

class BEntry;
class TagFile;

// Finds the files for an include-style name without rereading the tags file.
//
// There is one cache for local tags and one for the system's, for as long as the plug-in is loaded. Users hold
// PathCacheLock() around every use, and take it before a cache's own lock. A background load changes the paths without
// a lock: do not touch them until LoadIfNeeded() has returned true.
class PathCache {
public:
    PathCache() = default;
    ~PathCache();
    PathCache(const PathCache&) = delete;
    PathCache& operator=(const PathCache&) = delete;

    static PathCache& LocalTagCache();
    static PathCache& SystemTagCache();
    static BLocker& PathCacheLock();

    // True when the paths can be searched now. Otherwise a background thread loads them; if none starts, the next call
    // retries. Without 'inBackground' it loads them here, and returns true even for an unreadable file.
    bool LoadIfNeeded(TagFile& tagFile, bool inBackground);

    // Loads now, from the beginning, and closes 'tagFile'. An unreadable file changes nothing.
    void LoadSelf(TagFile& tagFile);

    // Runs on the background thread; deletes 'tagFile'.
    void LockedLoadSelf(TagFile* tagFile);

    // Drops the paths if the tags file's time differs from the time of their load, unless a load runs.
    void FlushIfNeeded(const BEntry* tagsEntry);

    // The next path that matches 'pattern', in sorted order; null after the last one, and then again from the
    // beginning. The result is valid until the paths are dropped.
    const char* FindNext(const char* pattern);
    void Rewind(); // the next search starts from the beginning

    void Clear();
    time_t FileTime(); // the tags file's time at the last load, 0 before any; a flush keeps it

private:
    void StartLoading(std::unique_ptr<TagFile> tagFile);
    bool LoadPaths(TagFile& tagFile);

    std::vector<char*> paths;
    time_t fileTime = 0;
    std::string lastFound;
    BLocker lock; // guards fileTime, loaded and loading
    bool loaded = false;
    bool loading = false;
};
