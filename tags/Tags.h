// The two tags files that serve a document, read as one.
#pragma once

#include "tags/TagFile.h"

#include <string>

class BEntry;
class PluginInterface;
struct EntryRef;

// The local tags file first, then the system's. Made for one search and used on one thread; symbols that are in both
// files come twice. Takes the path caches' lock where it touches them, so it may be made on any thread.
//
// Destruction does not close files: who stops reading before a reader has said false calls Done().
class Tags {
public:
    // Either file may be missing, either pointer null or its entry unset. Opens nothing, but forgets cached paths of
    // tags files that have changed.
    Tags(const BEntry* localTags, const BEntry* systemTags, const std::string& pattern, bool checkDates);
    Tags(const Tags&) = delete;
    Tags& operator=(const Tags&) = delete;

    // Starts, or starts over after Done(); false when neither file can be opened. To be called before the readers, and
    // again after one of them has said false.
    bool Rewind();
    void Done(); // closes what is open

    // As the readers of TagFile. 'isSystem' tells which file a tag came from. 'stopAtMismatch' ends each file's part of
    // the search separately: a mismatch in the local file goes on with the system's.
    bool Next(std::string& name, std::string& qualifier);
    bool Next(std::string& name, std::string& qualifier, char& kind, EntryRef& ref, int& line, bool& isSystem);
    template <class Match>
    bool NextMatch(std::string& name, std::string& qualifier, char& kind, EntryRef& ref, int& line, bool& isSystem,
                   bool stopAtMismatch, Match);

    // The next path in the tags files, as written there, that the pattern is the end of (see MatchesPath). The system's
    // paths are loaded in the background by the first search that comes to them, which finds none of them.
    bool NextFileMatch(std::string& path);

    // Has each tags file made anew that a search found out of date. Document thread only.
    //
    // Defined in generate/, which stands above this folder.
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
