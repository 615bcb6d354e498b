// Fills the completion window with the cache's names.
#pragma once

#include <string>
#include <vector>

class BListView;
class Tags;

class AutoCompletionPopulator {
public:
    explicit AutoCompletionPopulator(const std::vector<std::string>* names) : names(names) {} // borrowed

    void Populate(Tags& tags, BListView* list); // see ListCandidates.h

private:
    const std::vector<std::string>* names;
};
