// Tells from the text left of the caret whether the caret stands in a C++ name, in a message of Objective-C, or in
// neither.
#pragma once

#include "scan/Predicates.h"
#include "scan/SkippedGroup.h"

namespace scan {

class Text;

// What was found.
struct Context {
    enum class Kind {
        Unknown, // the text right of the caret decides: a selector may begin there
        Name,    // behind a scope of a C++ name, or behind a label or "?:" that only looked like a selector
        Message, // behind a piece of a selector, with the '[' of its message to the left
    };
    Kind kind;

    // Where the assembly of a selector has to begin, unless it is a name: at or before the first piece of the selector;
    // -1 when there is no identifier.
    long start;
};

// Reads the text leftwards from 'caret' - 1, each character once, until the context is clear or the text begins.
class ContextScan {
public:
    Context Run(const Text& text, long caret);

private:
    // Each takes the character at 'offset' and answers whether to go on.
    bool Step(char ch);
    bool StepOutside(char ch); // of a message, as far as is known
    bool StepMessage(char ch);

    void TakeIdentifier();
    void TakeSeparator(char ch);
    void TakeMessageIdentifier();
    bool FindsNoMessage(Context::Kind kind);

    Context result{Context::Kind::Unknown, -1};
    long offset = 0;
    long firstWordStart = -1; // of the identifier that ends at the caret; -1 when none does
    bool leftFirstWord = false;
    bool mayBeCpp = true;      // every character so far can belong to a C++ name
    bool colonPending = false; // behind a ':' whose left neighbour decides what it is
    bool pieceSeen = false;    // in a piece of the selector
    SkippedGroup skipped{BackwardBracketMatch};
};

} // namespace scan
