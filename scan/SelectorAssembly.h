// Puts the pieces of an Objective-C selector together from the message that they stand in.
#pragma once

#include "scan/Pattern.h"
#include "scan/Predicates.h"
#include "scan/SkippedGroup.h"

#include <optional>
#include <string>

namespace scan {

class Text;

// Reads the text rightwards, from where ContextScan says, until the message ends: past line ends, if need be to the end
// of the text.
class SelectorAssembly {
public:
    // 'text' outlives the assembly.
    SelectorAssembly(const Text& text, long start) : text(text), offset(start), start(start) {}

    // The whole selector; the word behind the last colon is an argument and no part of it. None when it is longer than
    // 1024.
    std::optional<Pattern> ForLookup();

    // What has been typed of the selector at 'caret', with the piece that is being typed: "initWithFrame:sty".
    std::optional<Pattern> ForCompletion(long caret);

private:
    void Assemble(long end);
    bool Step(char ch); // whether to go on
    void SkipFrom(char ch);
    void EndPiece();
    std::optional<Pattern> Result() const;

    const Text& text;
    long offset;
    long start; // just behind the last colon of the selector
    std::string selector;
    std::string piece;
    SkippedGroup skipped{ObjcForwardBracketMatch}; // quotes inside brackets are not seen
};

} // namespace scan
