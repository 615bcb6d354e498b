// Fills a list with candidates.
#pragma once

#include <string>
#include <vector>

class BListView;

// The most candidates that a list shows; if there are more, a last item says so ("     ... more").
inline constexpr long kMostListedCandidates = 200;

// Adds items for the names and selects the first. Call it in a section of the list's window or before that is shown.
void ListCandidates(const std::vector<std::string>& names, BListView* list);
