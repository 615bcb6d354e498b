// What the statements of a function declare.
#pragma once

#include "resolve/Declarations.h"
#include "resolve/Tokens.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace resolve {

// "for (", "if (": what its parentheses declare is visible behind them.
bool IsControlWord(const Token& token);

// "case 1:", "done:": the token behind the labels that a statement begins with, which is at most 'end' within a label.
size_t BehindLabels(const Tokens& tokens, size_t begin, size_t end);

// Parts of one text in their order, such as the statements of a block. Each is read when it is first asked for, and
// only once, so that thousands of questions about one function take no longer than reading it.
class StatementSeries {
public:
    struct Part {
        size_t behind = 0; // the token behind it
        Tokens::Range range;
        std::vector<Declared> declared = {}; // when it is read
        size_t declaring = kNone; // the last one up to here that declares, counted from 1; kNone when unknown
    };
    using Reader = std::function<std::vector<Declared>(const Part&)>;

    explicit StatementSeries(size_t begin) : next(begin), steps{begin} {}

    const Part& operator[](size_t index) const { return parts[index]; }
    size_t CountBefore(size_t inner) const; // the parts that end before the token
    size_t LastStepAt(size_t inner) const;  // what begins last at or before the token, complete or not
    // Of the first 'count' parts the last one that declares, counted from 1; 0 when none does.
    size_t Declaring(size_t count, const Reader& read);

    void Add(Tokens::Range range, size_t behind) { parts.push_back({.behind = behind, .range = range}); }
    void Step(size_t begin) { steps.push_back(begin); }

    size_t next; // where looking for parts continues

private:
    std::vector<Part> parts;
    std::vector<size_t> steps; // where something begins, in order
};

// The statements of one text, as far as questions have needed them. Borrows the tokens and the name; one thread.
class KnownStatements {
public:
    // Declarations of other names are dropped; "" keeps all.
    KnownStatements(const Tokens& tokens, std::string_view name) : tokens(tokens), name(name) {}

    // The statements of a block, complete up to the token.
    StatementSeries& Block(size_t open, size_t inner);
    // The headers that a statement begins with, complete up to the token: "if (a) for (b)", "if (a) {} else if (b)".
    // 'first' is the token behind its labels.
    StatementSeries& Headers(size_t begin, size_t first, size_t inner);

    size_t Declaring(StatementSeries& block, size_t count);
    size_t DeclaringHeader(StatementSeries& headers, size_t count);

    const std::vector<Declared>& Header(size_t open);      // between the parentheses
    const std::vector<Declared>& Parameters(size_t open);  // as ReadParameters()
    const std::vector<Declared>& Unfinished(size_t begin); // the statement, whatever bracket ends it

    size_t Readings() const { return readings; } // of a statement or a list, so far

private:
    enum class What { Header, Parameters, Unfinished };

    bool EndsStatement(size_t close) const;
    size_t EndOfStatement(size_t begin) const;
    std::vector<Declared> DeclaredInHeader(size_t open) const;
    std::vector<Declared> Kept(std::vector<Declared> declared);
    const std::vector<Declared>& Once(What what, size_t index, const std::function<std::vector<Declared>()>& read);

    const Tokens& tokens;
    const std::string_view name;
    std::map<size_t, StatementSeries> blocks;                     // by '{'
    std::map<std::pair<size_t, size_t>, StatementSeries> headers; // by begin and first
    std::map<std::pair<What, size_t>, std::vector<Declared>> others;
    size_t readings = 0;
};

} // namespace resolve
