// The paths that one tags file names, sorted and each once.
#pragma once

#include "vetch/support/BLocker.h"

#include <ctime>
#include <memory>
#include <string>
#include <vector>

class BEntry;
class TagFile;

// Finds the files that an include-style name means without reading the tags file again.
//
// There is one for local tags and one for the system's, for as long as the plug-in is loaded. Their users hold
// PathCacheLock() around every use, and take it before anything takes a cache's own lock. A background load works on
// the paths without any lock: nobody touches them until LoadIfNeeded() has said true.
class PathCache {
public:
    PathCache() = default;
    ~PathCache();
    PathCache(const PathCache&) = delete;
    PathCache& operator=(const PathCache&) = delete;

    static PathCache& LocalTagCache();
    static PathCache& SystemTagCache();
    static BLocker& PathCacheLock();

    // True when the paths can be searched now. Otherwise they are being loaded, at the latest from this call on, by a
    // thread of their own; when there is none to be had, the next call tries again. Without 'inBackground' they are
    // loaded here, and the answer is true even for an unreadable file.
    bool LoadIfNeeded(TagFile& tagFile, bool inBackground);

    // Loads now, from the beginning, and closes 'tagFile'. An unreadable file changes nothing.
    void LoadSelf(TagFile& tagFile);

    // The background thread's work; deletes 'tagFile'.
    void LockedLoadSelf(TagFile* tagFile);

    // Drops the paths when the tags file has not the time that they were loaded at, unless they are being loaded.
    void FlushIfNeeded(const BEntry* tagsEntry);

    // The next path that 'pattern' means, in sorted order; null after the last one, and then from the beginning again.
    // The result lives until the paths are dropped.
    const char* FindNext(const char* pattern);
    void Rewind(); // the next search starts from the beginning

    void Clear();
    time_t FileTime(); // the tags file's when the paths were loaded, 0 when they never were; outlives a flush

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
