// Reads one expression for its type, from its first token to its last.
#pragma once

#include "resolve/Expressions.h"

#include <string_view>
#include <vector>

namespace resolve {

// Precedence is followed only as far as types need it: the first operand's type stands for that of most binary
// operators. Unknown is an answer everywhere. Used once, by one thread; borrows its owner.
class Expressions::Reader {
public:
    // Of the tokens [begin, end). 'depth' counts the expressions around this one and the declarations that led to it.
    Reader(Expressions& owner, size_t begin, size_t end, int depth)
        : owner(owner), tokens(owner.tokens), place(begin), end(end), depth(depth)
    {
    }

    Type Read();

private:
    Type Sub(size_t from, size_t to) { return Reader(owner, from, to, depth + 1).Read(); }
    bool IsAtEnd() const { return place >= end; }
    void SkipBracket();
    size_t EndOfStatement(size_t from, size_t limit) const;

    // Operators; a cast is read with its operand.
    Type Operators(Type first);
    Type AfterColon(size_t question);
    Type Unary();
    bool IsCastAt(size_t open) const;
    bool LooksLikeType(size_t open, size_t close) const;
    Type Dereferenced(Type type);
    Type New();
    Type Postfix(Type type);
    Type IndexedOf(const Type& type);
    Type Member(const Type& type, bool isArrow);

    // What an expression begins with.
    Type Primary();
    Type Number();
    Type ObjectLiteral();
    Type Parenthesized();
    Type LastStatement(size_t brace);
    Type Bracket();
    Type Lambda();

    // Names, and the calls that follow them (ExpressionNames.cpp).
    Type Word();
    Type NamedCast();
    Type Name();
    Type Argument(Tokens::Range part);
    Type FromLocal(const LocalName& local, bool isCall);
    Type Called(Type type);
    std::vector<Type> Passed(size_t open);
    Type FromMeaning(size_t begin, size_t last, std::string_view qualifier, const std::vector<Type>& arguments,
                     bool isCall);
    Type FromSymbol(const Meaning& meaning, const Type& written, const std::vector<Type>& arguments, bool isCall);
    Type FromMacro(bool isCall);

    Expressions& owner;
    const Tokens& tokens;
    size_t place; // of the next token
    const size_t end;
    const int depth;
};

} // namespace resolve
