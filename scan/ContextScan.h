// Decides from the text left of the caret whether it stands in a C++ name, in an Objective-C message, or in neither.
#pragma once

#include "scan/Predicates.h"
#include "scan/SkippedGroup.h"

namespace scan {

class Text;

// The result.
struct Context {
    enum class Kind {
        Unknown, // the text right of the caret decides: a selector may begin there
        Name,    // behind a scope, or behind a label or "?:" that resembled a selector
        Message, // behind a piece of a selector, with the '[' of its message to the left
    };
    Kind kind;

    // Where to start the assembly of a selector: at or before its first piece. -1 without an identifier. Not for names.
    long start;
};

// Reads the text leftwards from 'caret' - 1, each character once, until the context is clear or the text ends.
class ContextScan {
public:
    Context Run(const Text& text, long caret);

private:
    // Each takes the character at 'offset'; true to continue.
    bool Step(char ch);
    bool StepOutside(char ch); // no message found so far
    bool StepMessage(char ch);

    void TakeIdentifier();
    void TakeSeparator(char ch);
    void TakeMessageIdentifier();
    bool FindsNoMessage(Context::Kind kind);

    Context result{Context::Kind::Unknown, -1};
    long offset = 0;
    long firstWordStart = -1; // of the identifier that ends at the caret; -1 without one
    bool leftFirstWord = false;
    bool mayBeCpp = true;      // every character so far can belong to a C++ name
    bool colonPending = false; // behind a ':' that its left neighbour decides
    bool pieceSeen = false;    // in a piece of the selector
    SkippedGroup skipped{BackwardBracketMatch};
};

} // namespace scan
