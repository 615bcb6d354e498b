#include "completion/ListCandidates.h"

#include "vetch/interface/BListItem.h"
#include "vetch/interface/BListView.h"

#include <algorithm>

void ListCandidates(const std::vector<std::string>& names, BListView* list)
{
    const long count = std::min(static_cast<long>(names.size()), kMostListedCandidates);
    for (long i = 0; i < count; ++i)
        list->AddItem(new BStringItem(names[i].c_str(), 0, true));
    // A selectable item like any other; choosing it does nothing.
    if (count < static_cast<long>(names.size()))
        list->AddItem(new BStringItem("     ... more", 0, true));
    if (list->CountItems() > 0)
        list->Select(0, false);
}
