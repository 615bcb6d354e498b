// One tags file being read, a line at a time.
#pragma once

#include "tagsfile/TagLines.h"
#include "vetch/storage/BPath.h"
#include "vetch/support/Cancellation.h"

#include <ctime>
#include <string>
#include <vector>

class BEntry;
struct EntryRef;
struct stat;

// Reads what ctags writes with line numbers as ex-commands ("--excmd=number"); the lines of a file with search patterns
// are all stepped over.
//
// Reading never fails half-way: a line that is not a tag is stepped over in silence. Not thread-safe; a copy is
// independent of its original and starts closed, which is how a background load gets a reader of its own. Destruction
// does not close the file: who stops reading before a reader has said false calls Done().
class TagFile {
public:
    // Which names a search accepts.
    struct ExactMatch {};   // the pattern's name, template arguments ignored; a selector pattern is a beginning
    struct PartialMatch {}; // names that begin with the pattern's name
    struct AnyMatch {};     // all names, whatever their qualifiers

    // 'entry' need not exist and may be null; 'pattern' may be qualified ("Outer::Inner::name"). With 'checkDates',
    // NextMatch() finds out whether sources are newer than the tags file.
    TagFile(const BEntry* entry, const std::string& pattern, bool checkDates);
    TagFile(const TagFile& other);
    TagFile& operator=(const TagFile&) = delete;

    // Opens the file at its beginning; false when it cannot be opened. Call Done() first if it is open.
    bool Rewind();
    void Done(); // closes the file if it is open

    // The readers answer false at the end of the file, or when it is closed; they do not close it.

    // The next tag's name and qualifier ("" for none), whether or not its source file exists.
    bool Next(std::string& name, std::string& qualifier);

    // The next tag that matches the pattern and whose source file exists. With 'stopAtMismatch' the first line whose
    // name does not match ends the search. The outputs mean nothing after false. Instantiated for the three kinds of
    // match.
    template <class Match>
    bool NextMatch(std::string& name, std::string& qualifier, char& kind, EntryRef& ref, int& line, bool stopAtMismatch,
                   Match);

    // Adds the file field of each remaining line, exactly as it is written, to 'paths', which is sorted by strcmp and
    // free of duplicates and stays so, unless reading is cancelled. Added strings are to be freed with free(). Throws
    // std::bad_alloc; then the paths are in no order, and may be null.
    void LoadPathCache(std::vector<char*>& paths);

    // Strips "class:", "namespace:", "struct:" and "union:" from the front of a scope text and gives the rest as the
    // qualifier; both stay as they are when none is there, or when 'text' is null.
    static void SkipClassToken(const char*& text, std::string& qualifier);

    time_t TagTime() const; // when the tags file was modified; 0 when that cannot be found out
    const BPath& Path() const { return path; }
    bool OutOfDate() const { return outOfDate; } // whether a search has met a source that is newer; never in a copy
    const std::string& NewerSource() const { return newerSource; } // the first of them, "" for none

private:
    bool FindSource(const char* file, EntryRef& ref);
    std::string Directory() const;
    void CheckDate(const EntryRef& source, const struct stat& status);

    BPath path;
    std::string namePattern;
    std::string qualifierPattern;
    std::string startOfMatches;
    tagsfile::TagLines lines{&vetch::ReadingCancelledFlag()};
    bool checkDates;
    bool outOfDate = false;
    std::string newerSource;
};
