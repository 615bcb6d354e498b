// Fills a list with candidates.
#pragma once

#include <string>
#include <vector>

class BListView;

// Adds items for the names, at most kMostListedCandidates, and selects the first. If there are more names, a last item
// says so ("     ... more"). Call it in a section of the list's window or before that is shown.
void ListCandidates(const std::vector<std::string>& names, BListView* list);
