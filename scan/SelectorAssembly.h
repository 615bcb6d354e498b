// Assembles an Objective-C selector from the pieces in its message.
#pragma once

#include "scan/Pattern.h"
#include "scan/Predicates.h"
#include "scan/SkippedGroup.h"

#include <optional>
#include <string>

namespace scan {

class Text;

// Reads the text rightwards, from the start that ContextScan found, to the end of the message. It reads past line ends,
// at most to the end of the text.
class SelectorAssembly {
public:
    // 'text' outlives the assembly.
    SelectorAssembly(const Text& text, long start) : text(text), offset(start), start(start) {}

    // The whole selector; the word behind the last colon is an argument, not a part of it. None when it exceeds 1024
    // bytes.
    std::optional<Pattern> ForLookup();

    // The typed part of the selector at 'caret', with the piece being typed: "initWithFrame:sty".
    std::optional<Pattern> ForCompletion(long caret);

private:
    void Assemble(long end);
    bool Step(char ch); // true to continue
    void SkipFrom(char ch);
    void EndPiece();
    std::optional<Pattern> Result() const;

    const Text& text;
    long offset;
    long start; // behind the selector's last colon
    std::string selector;
    std::string piece;
    SkippedGroup skipped{ObjcForwardBracketMatch}; // ignores quotes inside brackets
};

} // namespace scan
