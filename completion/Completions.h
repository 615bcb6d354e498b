// The explicit command's candidates, read from the tags files.
#pragma once

#include "tags/StringVector.h"

class BListView;
class Tags;

// Names with their qualifiers, in the order of the tags files, each once, at most 1000. Document thread.
class Completions : public StringVector {
public:
    explicit Completions(Tags& tags); // searches at once, for the pattern of 'tags'

    void FindCompletions(Tags& tags, StringVector& out, int max); // see FindCandidates()
    void Populate(Tags& tags, BListView* list);                   // see ListCandidates.h
};
