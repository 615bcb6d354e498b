#include "completion/Completions.h"

#include "completion/ListCandidates.h"
#include "tags/Tags.h"
#include "vetch/storage/EntryRef.h"

namespace {

constexpr int kMostCandidates = 1000;

} // namespace

Completions::Completions(Tags& tags)
{
    FindCompletions(tags, *this, kMostCandidates);
}

void Completions::FindCompletions(Tags& tags, StringVector& out, int max)
{
    out.Clear();
    if (!tags.Rewind())
        return;
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
    bool isSystem;
    // Tags files are sorted: after the first match, the first other name ends the search of a file.
    bool stopAtMismatch = false;
    while (tags.NextMatch(name, qualifier, kind, ref, line, isSystem, stopAtMismatch, TagFile::PartialMatch())) {
        stopAtMismatch = true;
        out.PushBackUnique((qualifier.empty() ? name : qualifier + "::" + name).c_str());
        if (static_cast<int>(out.Size()) >= max)
            break;
    }
    tags.Done();
}

void Completions::Populate(Tags&, BListView* list)
{
    ListCandidates(Strings(), list);
}
