#include "tags/Candidates.h"

#include "base/Utf8.h"
#include "scan/Pattern.h"
#include "scan/Predicates.h"
#include "scan/Text.h"
#include "tags/CompletionCache.h"
#include "tags/StringVector.h"
#include "tags/Tags.h"
#include "vetch/storage/EntryRef.h"

namespace {

// The pattern excludes a leading "std::" that is in the text.
bool FollowsStd(const scan::Text& text, long start)
{
    const std::string scope = "std::";
    return text.Range(start - static_cast<long>(scope.length()), start) == scope;
}

// True when the common beginning can continue the pattern. Candidates have their scopes, and the pattern may not. To
// insert the end of "std::vector" behind "vec" would spoil the text, as would a scope behind "std::s".
bool GoesOn(const scan::Text& text, const scan::Pattern& typed, const std::string& common)
{
    return common.starts_with(typed.text) &&
           !(IsCppPattern(common.substr(typed.text.length())) && FollowsStd(text, typed.start));
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
    // Tags files are sorted: after the first match, the first other name ends the search of a file.
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
    while (!common.empty() && common.length() < any.length() && base::ContinuesCharacter(any[common.length()]))
        common.pop_back();
    return common;
}

Suggestion SuggestionFor(const scan::Text& text, const scan::Pattern& typed, const StringVector& candidates)
{
    using Action = Suggestion::Action;
    const std::string common = CommonBeginning(candidates);
    const bool goesOn = GoesOn(text, typed, common);
    if (goesOn && common.length() > typed.text.length())
        return {Action::Insert, common.substr(typed.text.length())};
    if (candidates.Size() == 1 && !goesOn)
        return {Action::Replace, candidates.Strings().front()};
    return {candidates.Size() < 2 ? Action::Nothing : Action::Offer, ""};
}

std::vector<std::string> CandidatesWhileTyping(const CompletionCache& cache, const std::string& pattern)
{
    constexpr size_t kTooMany = 200; // for a list that the user did not request
    std::vector<std::string> names;
    cache.GetCompletions(pattern.c_str(), names, kTooMany);
    const bool typedInFull = names.size() == 1 && names.front() == pattern;
    if (typedInFull || names.size() >= kTooMany)
        names.clear();
    return names;
}
