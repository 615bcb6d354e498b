// Two versions of a text that differ in the body of one function: nearly everything known about the first one holds for
// the second.
#pragma once

#include "tagging/ParsedSource.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tagging {

// A version of a text that was parsed without locals; borrowed.
struct EarlierText {
    std::string_view text;
    const ParsedSource& source;
};

// Finding out what ctags says of a long text takes much longer than of one function. When ctags reads the changed
// function alone, comes to its end where that is, and finds in it what it found before, all other symbols stay. Any
// thread.
class ChangedFunction {
public:
    // Nullopt when something else may have changed: another function, a function's head, a directive. Borrows all.
    static std::optional<ChangedFunction> Find(const EarlierText& before, std::string_view text);

    // For ctags, in the language of the text: the function as it was and as it is.
    const std::string& Excerpt() const { return excerpt; }

    // All symbols of the new text, from what ctags writes about the excerpt. Their texts are put into the pool. Nullopt
    // when the change alters more than the lines of symbols.
    std::optional<std::vector<Symbol>> Symbols(std::string_view ofCtags, base::TextPool& texts) const;

private:
    ChangedFunction(const ParsedSource& before, const Symbol& function) : before(before), function(function) {}

    unsigned Moved(unsigned line) const { return line > lastBefore ? line - lastBefore + lastNow : line; }
    bool IsInner(const Symbol& symbol) const;
    bool IsSame(const Symbol& earlier, const Symbol& now) const;
    bool HasSameInside(const std::vector<Symbol>& inside) const;

    const ParsedSource& before;
    const Symbol& function;
    unsigned first = 0; // line that has changed
    unsigned lastBefore = 0;
    unsigned lastNow = 0;
    std::string excerpt;
};

} // namespace tagging
