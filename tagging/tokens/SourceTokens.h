// The tokens of a source of C, C++ or Objective-C, before any macro is replaced.
#pragma once

#include <string>
#include <string_view>

namespace tagging {

struct Token {
    enum Kind {
        kWord,      // identifiers and keywords
        kNumber,    // 1, 0x1F, 1'000
        kLiteral,   // strings and characters, with their quotes; a prefix is a word of its own, but for raw strings
        kMark,      // one character, or "->"
        kDirective, // from "#" to the end of its last line, the line break excluded
    };

    std::string_view text; // as in the source: line splices inside a token stay
    unsigned line = 0;     // where it begins, from 1
    Kind kind = kMark;

    bool Is(char mark) const { return kind == kMark && text.size() == 1 && text[0] == mark; }
    bool Is(std::string_view word) const { return kind == kWord && text == word; }
};

// Reads any bytes: what is not ended ends with its line (strings), or with the text (comments, raw strings). Comments
// give no tokens. The time for all tokens is proportional to the text. A copy reads on from the same place.
class SourceTokens {
public:
    explicit SourceTokens(std::string_view text) : text(text) {}

    // False at the end. The token is a part of the text.
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
    bool atLineStart = true; // only blanks and comments so far: a '#' is a directive
};

// The word as the compiler sees it: without line splices.
std::string WithoutSplices(std::string_view word);

// The name of a directive and what follows it: {"if", " 0"}.
struct Directive {
    explicit Directive(std::string_view text);

    std::string_view name;
    std::string_view rest;

    bool BeginsBranches() const { return name == "if" || name == "ifdef" || name == "ifndef"; }
    bool ContinuesBranches() const;
    bool EndsBranches() const { return name == "endif"; }
    // "#if 0" and "#elif 0": code that somebody put away.
    bool IsNever() const;
};

} // namespace tagging
