// A document's two tags files, read as one.
#pragma once

#include "tags/TagFile.h"

#include <string>

class BEntry;
class PluginInterface;
struct EntryRef;

// The local tags file first, then the system's. Made for one search and used on one thread; symbols in both files come
// twice. Locks the path caches itself, so it may be made on any thread.
//
// Destruction does not close files: call Done() if you stop before a reader returns false.
class Tags {
public:
    // Either file may be missing, either pointer null or its entry unset. Opens nothing, but drops cached paths of tags
    // files that have changed.
    Tags(const BEntry* localTags, const BEntry* systemTags, const std::string& pattern, bool checkDates);
    Tags(const Tags&) = delete;
    Tags& operator=(const Tags&) = delete;

    // Starts, or restarts after Done(); false when neither file can be opened. Call it before the readers, and again
    // after one of them has returned false.
    bool Rewind();
    void Done(); // closes open files

    // As the readers of TagFile. 'isSystem' tells the tag's file. 'stopAtMismatch' ends the search of each file
    // separately: after a mismatch in the local file it continues in the system's.
    bool Next(std::string& name, std::string& qualifier);
    bool Next(std::string& name, std::string& qualifier, char& kind, EntryRef& ref, int& line, bool& isSystem);
    template <class Match>
    bool NextMatch(std::string& name, std::string& qualifier, char& kind, EntryRef& ref, int& line, bool& isSystem,
                   bool stopAtMismatch, Match);

    // The next path of the tags files, unchanged, that ends with the pattern (see MatchesPath). The first search that
    // reaches the system's paths starts their background load and finds none of them.
    bool NextFileMatch(std::string& path);

    // Rebuilds every tags file that a search found stale. Document thread only.
    //
    // Defined in generate/, a higher floor.
    void UpdateIfNeeded(PluginInterface* host);

    const TagFile& Local() const { return local; }
    const TagFile& System() const { return system; }

private:
    bool GoOnWithSystem();

    TagFile local;
    TagFile system;
    std::string namePattern;
    std::string qualifierPattern;
    bool readingLocal = true;
};
