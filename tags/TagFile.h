// Reads one tags file line by line.
#pragma once

#include "tagsfile/TagLines.h"
#include "vetch/storage/BPath.h"
#include "vetch/support/Cancellation.h"

#include <ctime>
#include <functional>
#include <string>
#include <vector>

class BEntry;
struct EntryRef;
struct stat;

// Reads the output of ctags with line numbers as ex-commands ("--excmd=number"); skips lines with search patterns.
//
// Reading does not fail half-way: a line that is not a tag is skipped silently. Not thread-safe; a copy is independent
// of its original and starts closed, so a background load uses a copy. Destruction does not close the file: call Done()
// if you stop before a reader returns false.
class TagFile {
public:
    // The names that a search accepts.
    struct ExactMatch {};   // the pattern's name, template arguments ignored; a selector pattern is a beginning
    struct PartialMatch {}; // names that begin with the pattern's name
    struct AnyMatch {};     // all names, with any qualifier

    // 'entry' may be missing or null; 'pattern' may be qualified ("Outer::Inner::name"). With 'checkDates', NextMatch()
    // checks whether sources are newer than the tags file.
    TagFile(const BEntry* entry, const std::string& pattern, bool checkDates);
    TagFile(const TagFile& other);
    TagFile& operator=(const TagFile&) = delete;

    // Opens the file at its beginning; false when it cannot be opened. Call Done() first if it is open.
    bool Rewind();
    void Done(); // closes the file if it is open

    // The readers return false at the end of the file and when it is closed; they do not close it.

    // The next tag's name and qualifier ("" for none), even without its source file.
    bool Next(std::string& name, std::string& qualifier);

    // The next tag that matches the pattern and whose source file exists. With 'stopAtMismatch' the first line with
    // another name ends the search. The outputs are undefined after false. Instantiated for the three kinds of match.
    template <class Match>
    bool NextMatch(std::string& name, std::string& qualifier, char& kind, EntryRef& ref, int& line, bool stopAtMismatch,
                   Match);

    // Adds the file field of each remaining line, unchanged, to 'paths', which is sorted by strcmp without duplicates
    // and stays so, unless reading is cancelled. Free added strings with free(). Throws std::bad_alloc; then the paths
    // are unsorted and may be null.
    void LoadPathCache(std::vector<char*>& paths);

    // Strips "class:", "namespace:", "struct:" and "union:" from the front of a scope text; the rest is the qualifier.
    // Both are unchanged when there is none, or when 'text' is null.
    static void SkipClassToken(const char*& text, std::string& qualifier);

    time_t TagTime() const; // modification time; 0 when unknown
    const BPath& Path() const { return path; }
    bool OutOfDate() const { return outOfDate; } // whether a search has met a newer source; false in copies
    const std::string& NewerSource() const { return newerSource; } // the first newer source, "" for none

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

// The receiver of notices about files that are not read (tagsfile::WhyUnread), for a program without an application.
// Null for the application. Called on any thread that reads; set it while none does.
void SetUnreadReporter(std::function<void(const std::string& path, const std::string& why)> report);
