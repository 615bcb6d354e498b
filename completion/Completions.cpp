#include "completion/Completions.h"

#include "completion/ListCandidates.h"
#include "tags/Candidates.h"

#include <algorithm>

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
