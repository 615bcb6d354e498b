// The tokens of a text, with its brackets matched.
#pragma once

#include "tagging/tokens/SourceTokens.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace resolve {

inline constexpr size_t kNone = SIZE_MAX; // "no token"

struct Token : tagging::Token {
    size_t offset = 0;     // bytes, in the whole text
    size_t parent = kNone; // the innermost open bracket around the token: ( [ or {
    size_t match = kNone;  // of a bracket: the other one

    size_t End() const { return offset + text.size(); }
    bool IsMark(std::string_view mark) const { return kind == kMark && text == mark; }
    bool IsWord() const { return kind == kWord && !text.empty(); }
};

struct PlacedDirective {
    std::string_view text; // from '#' to the end of its last line
    size_t offset = 0;
    unsigned line = 0;
    size_t next = 0; // the first token after it
};

// Code without directives; each directive has its own tokens. In branches of an #if the brackets continue from the
// state before it, and after #endif from the end of the first branch. "::" is one token.
class Tokens {
public:
    explicit Tokens(std::string_view text) : Tokens(text, 0, 1) {}
    // A part of a text that begins at the offset and line.
    Tokens(std::string_view text, size_t offset, unsigned line);

    size_t Count() const { return all.size(); }
    // A token without text when there is none, so that neighbours need no check.
    const Token& operator[](size_t index) const { return index < all.size() ? all[index] : none; }

    // The word at, in or directly before the offset; kNone in a comment, a string, or elsewhere.
    size_t WordAt(size_t offset) const;
    size_t FirstFrom(size_t offset) const; // the first token that begins at the offset or behind it
    const PlacedDirective* DirectiveAt(size_t offset) const;
    const std::vector<PlacedDirective>& Directives() const { return directives; }

    // Whether two tokens are written without anything between them.
    bool Touch(size_t left, size_t right) const { return (*this)[left].End() == (*this)[right].offset; }
    // "=" that assigns or initialises: not a part of "==", "<=" or "+=".
    bool IsAssignment(size_t index) const;

    // The other end of template arguments: of '<', or of '>'; kNone when it is an operator.
    size_t AngleEnd(size_t open) const;
    size_t AngleBegin(size_t close) const;

    // The text from the first token to the end of the last; "" for none.
    std::string_view Text(size_t first, size_t last) const;

    // Begin and end of each part between commas, within a bracket and outside of inner ones.
    struct Range {
        size_t begin = 0;
        size_t end = 0; // behind the last
        bool IsEmpty() const { return begin >= end; }
    };
    std::vector<Range> Parts(size_t begin, size_t end) const;

private:
    class Brackets;

    void Add(const tagging::Token& token, size_t offset, Brackets& brackets);

    std::string_view text;
    size_t start = 0;
    std::vector<Token> all;
    std::vector<PlacedDirective> directives;
    Token none;
};

// Words that no declaration can be named after.
bool IsKeyword(std::string_view word);
// "if", "return", "delete": words that begin a statement or an expression, never a type.
bool IsStatementWord(std::string_view word);
// "int", "unsigned", "void".
bool IsBuiltInType(std::string_view word);
// "const", "static", "struct": words around the name of a type.
bool IsSpecifier(std::string_view word);

} // namespace resolve
