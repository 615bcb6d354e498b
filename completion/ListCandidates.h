// Fills a list with candidates.
#pragma once

#include <string>
#include <vector>

class BListView;

// Adds items for the names, at most kMostListedCandidates, and selects the first. When there are more names, one more
// item says so ("     ... more"). In the list's window's section, or before it is shown.
void ListCandidates(const std::vector<std::string>& names, BListView* list);
