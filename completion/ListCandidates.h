// How candidates stand in a list.
#pragma once

#include <string>
#include <vector>

class BListView;

// A list shows this many; when there are more, one more item says so ("     ... more").
inline constexpr long kMostListedCandidates = 200;

// Adds items for the names and selects the first. In the list's window's section, or before it is shown.
void ListCandidates(const std::vector<std::string>& names, BListView* list);
