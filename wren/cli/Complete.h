// One completion, from the request to the insertion or the candidates.
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
        Inserted,     // 'word' and 'line' are set
        Offered,      // 'candidates' is set
        NoCompletion, // no candidate adds to what is typed; while typing, also: no word, or too many candidates
        NoWord,       // nothing before the caret can be completed
        NoTags,
        Unusable
    };

    Outcome outcome = Outcome::Unusable;
    std::string word;                    // at the caret, after the edit, with its scopes
    std::string line;                    // after the edit, without its line break
    std::vector<std::string> candidates; // in the list's order
    bool more = false;                   // there are more candidates than the list
    std::string directory;               // whose tags files were searched
    std::string error;                   // for Unusable: the cause
};

// Completes like the editor's command. While typing: like typing the character before the caret once the names of all
// tags are loaded, which it waits for. Changes no file.
CompleteResult Complete(const CompleteOptions& options);

// The word around [start, end): its names, with the scopes in front ("Outer::Inner::name"). An end of the range that
// does not touch a name is an end of the word.
std::string WordAround(const std::string& text, size_t start, size_t end);

} // namespace wren
