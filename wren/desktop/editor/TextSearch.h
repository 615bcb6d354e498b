// Finding and replacing in the text of a view.
#pragma once

#include "wren/desktop/editor/ViewText.h"

#include <QRegularExpression>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace wren {

// Regular expressions are Perl's and match within a line. In their replacement, \0 to \9 are the groups, \n is a line
// end as in the rest of the file, and \t a tab.
struct TextSearch {
    std::string text; // empty: finds nothing
    bool regularExpression = false;
    bool matchCase = false;
    bool wholeWords = false;
    bool backwards = false;

    bool operator==(const TextSearch&) const = default;
};

// One search, made for one use. Scintilla's own expressions recurse for every character of a line, and would end the
// program on a line of some ten thousand.
class TextFinder {
public:
    struct Found {
        Selection range;
        std::vector<std::string> groups; // of an expression; the first is all of it
    };

    TextFinder(const ViewText& text, const TextSearch& search);

    bool IsValid() const { return expression.isValid(); }

    // The next match after the selection (backwards: before it), round the end.
    std::optional<Found> FindNext(Selection from) const;
    std::optional<Found> At(Selection selected) const; // the match that is exactly the selection

    long Replace(const Found& found, const std::string& with) const; // the end of the replacement
    long ReplaceAll(const std::string& with) const;
    long Count(long atMost) const;

    using Visit = std::function<bool(const Found&)>; // false: enough

    // The matches that begin at 'start' or behind it, up to 'end'; an expression goes on to the end of that line.
    // Returns where to begin for the rest: behind the end of the text when there is none.
    long EachWithin(long start, long end, const Visit& visit) const;

private:
    std::optional<Found> First(long start) const;
    std::optional<Found> Last(long end) const; // that ends at 'end' or before
    void Each(long start, const Visit& visit) const;
    void EachPlain(long start, const Visit& visit) const;
    bool EachInLine(long line, long start, const Visit& visit) const;
    std::optional<Selection> FindPlain(long start, long end) const; // backwards when 'end' is before 'start'
    std::optional<Selection> FindBytes(long start, long end) const;
    std::string Replacement(const Found& found, const std::string& with) const;

    ViewText text;
    TextSearch search;
    bool byExpression; // an expression, or letters whose case only an expression can ignore
    QRegularExpression expression;
};

} // namespace wren
