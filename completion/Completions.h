// Candidates and the lists that show them.
#pragma once

#include "tags/StringVector.h"

#include <string>
#include <vector>

class BListView;
class Tags;

// Adds items for the names, at most kMostListedCandidates, and selects the first. If there are more names, a last item
// says so ("     ... more"). Call it in a section of the list's window or before that is shown.
void ListCandidates(const std::vector<std::string>& names, BListView* list);

// The explicit command's candidates, read from the tags files: names with their qualifiers, in the order of the tags
// files, each once, at most 1000. Document thread.
class Completions : public StringVector {
public:
    explicit Completions(Tags& tags); // searches at once, for the pattern of 'tags'

    void FindCompletions(Tags& tags, StringVector& out, int max); // see FindCandidates()
    void Populate(Tags& tags, BListView* list);                   // see ListCandidates()
};

// Fills the completion window with the cache's names, while an identifier is typed.
class AutoCompletionPopulator {
public:
    explicit AutoCompletionPopulator(const std::vector<std::string>* names) : names(names) {} // borrowed

    void Populate(Tags& tags, BListView* list); // see ListCandidates()

private:
    const std::vector<std::string>* names;
};
