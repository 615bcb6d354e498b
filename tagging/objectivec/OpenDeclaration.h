// An Objective-C declaration whose end has not been reached.
#pragma once

#include "tagging/objectivec/ObjectiveCDeclarations.h"
#include "tagging/tokens/SourceTokens.h"

#include <vector>

namespace tagging {

// Collects tokens and recognises those that cannot belong to it: a damaged or incomplete declaration must not swallow
// the next one.
class OpenDeclaration {
public:
    enum class Subject : char {
        None,
        Header,     // "@interface", "@implementation" or "@protocol"
        HeaderRest, // ": Superclass <Protocol>" that an #if separates from its header
        Method,
        Property,
        Variable,
        Names, // declares nothing itself: "@class A, B;", "@synthesize a = b;"
    };

    // 'introducer' is the sign of a method or the introducing keyword. It is not among the tokens.
    void Begin(Subject newSubject, const Token& newIntroducer);
    void Clear() { Begin(Subject::None, {}); }

    bool IsOpen() const { return subject != Subject::None; }
    bool IsHeader() const { return subject == Subject::Header || subject == Subject::HeaderRest; }
    Subject What() const { return subject; }
    const Token& Introducer() const { return introducer; }
    TokenSpan Tokens() const { return tokens; }

    // Whether the token ends the declaration without being part of it. Semicolons are part of what they end, except for
    // kHeaderRest.
    bool IsEndedBy(const Token& token) const;
    // Whether the brace begins the members of a type, not the body of a method.
    bool BraceIsPart() const;

    // False, without keeping the token, when there are too many for a real declaration.
    bool Add(const Token& token);

    // The tokens include braces, but not their content.
    bool IsInBraces() const { return braces > 0; }
    bool BeginBraces(const Token& brace);
    void AddInBraces(const Token& token);

    // The parser of C handles a type that is declared with an instance variable. These tell whether the current braces,
    // or a kept token, belong to "struct Name { ... }".
    bool IsInTypeOfC() const { return isInTypeOfC; }
    bool HasTypeOfC() const { return typeEnd > 0; }
    bool IsOfTypeOfC(size_t index) const { return index >= typeBegin && (isInTypeOfC || index < typeEnd); }

private:
    void CountNesting(const Token& token);
    bool HeaderIsEndedBy(const Token& token) const;
    bool HeaderHasNoMoreWords(const Token& word) const;
    bool NamesAreEndedBy(const Token& token) const;

    Subject subject = Subject::None;
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
