// What is searched for in texts.
#pragma once

#include "base/Result.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace wren {

struct TextQuery {
    std::string text;
    bool isExpression = false; // a regular expression, as Perl has them; "^" and "$" are the ends of lines
    bool matchesCase = false;
    bool wholeWords = false;
};

struct TextMatch { // bytes
    size_t start = 0;
    size_t size = 0;
};

// Immutable; any thread.
class TextPattern {
public:
    static base::Result<TextPattern> Compile(const TextQuery& query); // fails for a wrong expression, and says where

    // Finds in one text after the other. An expression that takes too long finds nothing more in a text, so that a
    // search ends whatever the expression. One thread at a time; the pattern must outlive it.
    class Finder {
    public:
        explicit Finder(const TextPattern& pattern);

        // The first match that is not empty, at or behind 'from'.
        std::optional<TextMatch> Next(std::string_view text, size_t from);
        // What takes the place of the last match, which was in 'text': "$1" and "\1" are the first group, "$0" all of
        // the match, "\n" is 'lineEnd', "\t" a tab, "$$" and "\\" the character itself.
        std::string Expanded(std::string_view with, std::string_view text, std::string_view lineEnd) const;
        bool HasGivenUp() const { return hasGivenUp; } // in some text

    private:
        struct Contents;
        std::string_view GroupAt(size_t number, std::string_view text) const;

        std::shared_ptr<Contents> contents;
        bool hasGivenUp = false;
    };

private:
    struct Code;
    explicit TextPattern(std::shared_ptr<const Code> code) : code(std::move(code)) {}

    std::shared_ptr<const Code> code;
};

// The line end that the text uses: that of its first line, "\n" when it has none.
std::string_view LineEndOf(std::string_view text);

} // namespace wren
