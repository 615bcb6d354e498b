#include "tags/Candidates.h"

#include "tags/StringVector.h"
#include "tags/Tags.h"
#include "vetch/storage/EntryRef.h"

namespace {

bool ContinuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80; // in UTF-8
}

} // namespace

void FindCandidates(Tags& tags, StringVector& out, size_t max)
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
    // Tags files are sorted: behind the first match the first other name ends a file's part of the search.
    bool stopAtMismatch = false;
    while (tags.NextMatch(name, qualifier, kind, ref, line, isSystem, stopAtMismatch, TagFile::PartialMatch())) {
        stopAtMismatch = true;
        out.PushBackUnique((qualifier.empty() ? name : qualifier + "::" + name).c_str());
        if (out.Size() >= max)
            break;
    }
    tags.Done();
}

std::string CommonBeginning(const StringVector& candidates)
{
    std::string common;
    candidates.CommonSubstring(common);
    if (common.empty())
        return common;
    const std::string& any = candidates.Strings().front();
    while (!common.empty() && common.length() < any.length() && ContinuesCharacter(any[common.length()]))
        common.pop_back();
    return common;
}
