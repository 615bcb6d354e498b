// A declaration of Objective-C whose end has not been read yet.
#pragma once

#include "tagging/objectivec/ObjectiveCDeclarations.h"
#include "tagging/tokens/SourceTokens.h"

#include <vector>

namespace tagging {

// Collects tokens, and knows which one cannot belong to it any more: damaged and unfinished declarations shall not take
// the next one with them.
class OpenDeclaration {
public:
    enum class Subject : char {
        kNone,
        kHeader,     // "@interface", "@implementation" or "@protocol"
        kHeaderRest, // ": Superclass <Protocol>" that an #if parts from its header
        kMethod,
        kProperty,
        kVariable,
        kNames, // what declares nothing of its own: "@class A, B;", "@synthesize a = b;"
    };

    // 'introducer' is the sign of a method, and the keyword of those that begin with one. It is not among the tokens.
    void Begin(Subject newSubject, const Token& newIntroducer);
    void Clear() { Begin(Subject::kNone, {}); }

    bool IsOpen() const { return subject != Subject::kNone; }
    bool IsHeader() const { return subject == Subject::kHeader || subject == Subject::kHeaderRest; }
    Subject What() const { return subject; }
    const Token& Introducer() const { return introducer; }
    TokenSpan Tokens() const { return tokens; }

    // Whether the token ends it and is no part of it. Semicolons are part of what they end, but for kHeaderRest.
    bool IsEndedBy(const Token& token) const;
    // Whether the brace begins members of a type rather than the body of a method.
    bool BraceIsPart() const;

    // False when there are too many to be a declaration that somebody wrote: the token is not kept.
    bool Add(const Token& token);

    // What is in braces is not among the tokens, the braces are.
    bool IsInBraces() const { return braces > 0; }
    bool BeginBraces(const Token& brace);
    void AddInBraces(const Token& token);

    // A type declared with an instance variable is for the parser of C: whether the braces being read, or a token that
    // was kept, belong to "struct Name { ... }".
    bool IsInTypeOfC() const { return isInTypeOfC; }
    bool HasTypeOfC() const { return typeEnd > 0; }
    bool IsOfTypeOfC(size_t index) const { return index >= typeBegin && (isInTypeOfC || index < typeEnd); }

private:
    void CountNesting(const Token& token);
    bool HeaderIsEndedBy(const Token& token) const;
    bool HeaderHasNoMoreWords(const Token& word) const;
    bool NamesAreEndedBy(const Token& token) const;

    Subject subject = Subject::kNone;
    Token introducer;
    std::vector<Token> tokens;
    unsigned parentheses = 0; // brackets too
    unsigned angles = 0;
    unsigned braces = 0;
    bool isInTypeOfC = false;
    size_t typeBegin = 0;
    size_t typeEnd = 0;
};

} // namespace tagging
