// One completion, from the question to what an editor would put in or offer.
#pragma once

#include "wren/cli/ServingTags.h"
#include "wren/text/Place.h"

#include <string>
#include <vector>

namespace wren {

struct CompleteOptions {
    Place place; // where the caret is; without a column, at the end of the line
    bool whileTyping = false;
    TagsOptions tags;
};

struct CompleteResult {
    enum class Outcome {
        Inserted,     // 'word' and 'line' say what
        Offered,      // 'candidates' do
        NoCompletion, // no candidate adds to what is typed; while typing, also: no word, or too many candidates
        NoWord,       // nothing before the caret can be completed
        NoTags,
        Unusable
    };

    Outcome outcome = Outcome::Unusable;
    std::string word;                    // at the caret, after the edit, with its scopes
    std::string line;                    // after the edit, without its line break
    std::vector<std::string> candidates; // in the list's order
    bool more = false;                   // than the list shows
    std::string directory;               // whose tags files were asked
    std::string error;                   // for Unusable: what could not be used, and why
};

// By command, as the named command does it, or while typing: as when the character before the caret is typed with the
// names of all tags loaded, which it waits for. Changes no file.
CompleteResult Complete(const CompleteOptions& options);

// Where the word begins and ends that holds the text of [start, end): names, and their scopes in front of them
// ("Outer::Inner::name"). What begins or ends in something else begins or ends there.
std::string WordAround(const std::string& text, size_t start, size_t end);

} // namespace wren
