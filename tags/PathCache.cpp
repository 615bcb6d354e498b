#include "tags/PathCache.h"

#include "tags/AutoLock.h"
#include "tags/TagDiscovery.h"
#include "tags/TagFile.h"
#include "vetch/storage/BEntry.h"
#include "vetch/support/Cancellation.h"
#include "vetch/support/FThread.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>

namespace {

bool Less(const char* a, const char* b)
{
    return std::strcmp(a, b) < 0;
}

} // namespace

PathCache::~PathCache()
{
    Clear();
}

PathCache& PathCache::LocalTagCache()
{
    static PathCache cache;
    return cache;
}

PathCache& PathCache::SystemTagCache()
{
    static PathCache cache;
    return cache;
}

BLocker& PathCache::PathCacheLock()
{
    static BLocker lock;
    return lock;
}

void PathCache::Clear()
{
    for (char* path : paths)
        std::free(path);
    paths.clear();
}

void PathCache::Rewind()
{
    lastFound.clear();
}

time_t PathCache::FileTime()
{
    const AutoLock hold(lock);
    return fileTime;
}

bool PathCache::LoadIfNeeded(TagFile& tagFile, bool inBackground)
{
    const AutoLock hold(lock);
    if (loaded)
        return true;
    if (loading)
        return false;
    if (inBackground) {
        StartLoading(std::make_unique<TagFile>(tagFile));
        return false;
    }
    LoadSelf(tagFile);
    return true; // also without a file: there is no load to wait for, and the next call retries
}

// If no thread starts, the cache is unchanged and the next search retries.
void PathCache::StartLoading(std::unique_ptr<TagFile> tagFile)
{
    loading = true;
    try {
        FThread::Run(&PathCache::LockedLoadSelf, this, tagFile.get());
        static_cast<void>(tagFile.release()); // the thread owns it
    } catch (const std::exception&) {
        loading = false;
    }
}

// Reads an open file and closes it. Without memory for all paths there are none until the file changes. False, without
// paths, when reading was cancelled.
bool PathCache::LoadPaths(TagFile& tagFile)
{
    try {
        tagFile.LoadPathCache(paths);
    } catch (const std::bad_alloc&) {
        Clear();
        paths.shrink_to_fit();
    }
    tagFile.Done();
    if (!vetch::ReadingIsCancelled())
        return true;
    Clear();
    return false;
}

void PathCache::LoadSelf(TagFile& tagFile)
{
    // The reader that needs the paths may have opened it.
    tagFile.Done();
    if (!tagFile.Rewind())
        return;
    loaded = LoadPaths(tagFile);
    loading = false;
    if (loaded)
        fileTime = tagFile.TagTime();
}

void PathCache::LockedLoadSelf(TagFile* tagFile)
{
    const std::unique_ptr<TagFile> owner(tagFile);
    // A file that cannot be opened leaves the cache loading for good: searches do not retry, and a flush has nothing to
    // drop.
    if (!tagFile->Rewind())
        return;
    const bool isComplete = LoadPaths(*tagFile);
    const time_t time = tagFile->TagTime();

    const AutoLock hold(lock);
    if (isComplete)
        fileTime = time;
    loaded = isComplete;
    loading = false;
}

void PathCache::FlushIfNeeded(const BEntry* tagsEntry)
{
    const time_t time = TagFile(tagsEntry, "", false).TagTime();

    const AutoLock hold(lock);
    // Compares times, not paths, for equality. A tags file restored by a version control system or from an archive is
    // older than before and has changed. Two files of the same second count as one.
    if (time == fileTime || loading)
        return;
    Clear();
    loaded = false; // fileTime stays: it is the time of the last load and does not prevent another
}

const char* PathCache::FindNext(const char* pattern)
{
    auto path = paths.begin();
    if (!lastFound.empty())
        path = std::upper_bound(paths.begin(), paths.end(), lastFound.c_str(), Less);
    const int patternLength = static_cast<int>(std::strlen(pattern));
    for (; path != paths.end(); ++path) {
        if (MatchesPath(*path, static_cast<int>(std::strlen(*path)), pattern, patternLength)) {
            lastFound = *path;
            return *path;
        }
    }
    lastFound.clear();
    return nullptr;
}
