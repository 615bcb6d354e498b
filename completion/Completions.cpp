#include "completion/Completions.h"

#include "tags/Candidates.h"
#include "vetch/interface/BListItem.h"
#include "vetch/interface/BListView.h"

#include <algorithm>

void ListCandidates(const std::vector<std::string>& names, BListView* list)
{
    const size_t count = std::min(names.size(), kMostListedCandidates);
    for (size_t i = 0; i < count; ++i)
        list->AddItem(new BStringItem(names[i].c_str(), 0, true));
    // A selectable item like any other; choosing it does nothing.
    if (count < names.size())
        list->AddItem(new BStringItem("     ... more", 0, true));
    if (list->CountItems() > 0)
        list->Select(0, false);
}

Completions::Completions(Tags& tags)
{
    FindCompletions(tags, *this, kMostCandidates);
}

void Completions::FindCompletions(Tags& tags, StringVector& out, int max)
{
    FindCandidates(tags, out, static_cast<size_t>(std::max(max, 0)));
}

void Completions::Populate(Tags&, BListView* list)
{
    ListCandidates(Strings(), list);
}

void AutoCompletionPopulator::Populate(Tags&, BListView* list)
{
    ListCandidates(*names, list);
}
