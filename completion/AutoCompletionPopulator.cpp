#include "completion/AutoCompletionPopulator.h"

#include "completion/ListCandidates.h"

void AutoCompletionPopulator::Populate(Tags&, BListView* list)
{
    ListCandidates(*names, list);
}
