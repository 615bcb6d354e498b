// The names that complete what is typed, and what to do with them.
#pragma once

#include <string>
#include <vector>

namespace scan {
struct Pattern;
class Text;
} // namespace scan

class CompletionCache;
class StringVector;
class Tags;

inline constexpr size_t kMostCandidates = 1000;      // that the command looks at
inline constexpr size_t kMostListedCandidates = 200; // a list shows this many, and then that there are more
inline constexpr size_t kShortestTyped = 3;          // while typing: less is not completed

// Sets 'out' to the names that begin with the pattern for which 'tags' was made, with their qualifiers, in the order of
// the tags files, each once, at most 'max'; to nothing when neither file can be opened. Closes the files. Any thread.
void FindCandidates(Tags& tags, StringVector& out, size_t max);

// The candidates' common beginning, in whole characters: two that differ only in their second bytes have none.
std::string CommonBeginning(const StringVector& candidates);

struct Suggestion {
    enum class Action {
        Insert,  // 'text' at the caret, as it stands in the candidates
        Replace, // what is typed by 'text', a candidate
        Offer,   // the candidates
        Nothing  // there is none, or only the one that is typed already
    };

    Action action = Action::Nothing;
    std::string text;
};

// What the command does with the candidates for what is typed in 'text': it inserts what they have in common, puts in
// the only one, or offers them. Any thread.
Suggestion SuggestionFor(const scan::Text& text, const scan::Pattern& typed, const StringVector& candidates);

// The names to offer for a pattern while it is typed, in the order of bytes; none when there are too many, or when only
// the pattern itself is left. On the thread that may search the cache.
std::vector<std::string> CandidatesWhileTyping(const CompletionCache& cache, const std::string& pattern);
