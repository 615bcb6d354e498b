// The tokens of a source in C, C++ or Objective-C, before macro expansion.
#pragma once

#include <string>
#include <string_view>

namespace tagging {

struct Token {
    enum Kind {
        kWord,      // identifiers and keywords
        kNumber,    // 1, 0x1F, 1'000
        kLiteral,   // strings and characters with their quotes; a prefix is a separate word, except for raw strings
        kMark,      // one character, or "->"
        kDirective, // from "#" to the end of its last line, without the line break
    };

    std::string_view text; // as in the source, including line splices
    unsigned line = 0;     // where it begins, from 1
    Kind kind = kMark;

    bool Is(char mark) const { return kind == kMark && text.size() == 1 && text[0] == mark; }
    bool Is(std::string_view word) const { return kind == kWord && text == word; }
};

// Reads any bytes: unclosed strings end with their line, unclosed comments and raw strings with the text. Comments
// yield no tokens. Total time is proportional to the text. A copy continues from the same place.
class SourceTokens {
public:
    explicit SourceTokens(std::string_view text) : text(text) {}

    // False at the end. Tokens are parts of the text.
    bool Next(Token& token);

private:
    char At(size_t place) const { return place < text.size() ? text[place] : '\0'; }
    size_t SpliceAt(size_t place) const;
    size_t LineEndOf(size_t place) const;
    size_t CommentEnd(size_t place) const;
    size_t DirectiveEnd() const;
    size_t WordEnd() const;
    size_t NumberEnd() const;
    size_t LiteralEnd(size_t place) const;
    size_t RawStringEnd(size_t quote) const;
    size_t TokenEnd(Token::Kind& kind) const;
    void SkipTo(size_t end);
    void SkipBlanksAndComments();

    std::string_view text;
    size_t place = 0;
    unsigned line = 1;
    bool atLineStart = true; // only blanks and comments so far: a '#' begins a directive
};

// The word as the compiler sees it, without line splices.
std::string WithoutSplices(std::string_view word);

// The name of a directive and the text after it: {"if", " 0"}.
struct Directive {
    explicit Directive(std::string_view text);

    std::string_view name;
    std::string_view rest;

    bool BeginsBranches() const { return name == "if" || name == "ifdef" || name == "ifndef"; }
    bool ContinuesBranches() const;
    bool EndsBranches() const { return name == "endif"; }
    // "#if 0" and "#elif 0": disabled code.
    bool IsNever() const;
};

} // namespace tagging
