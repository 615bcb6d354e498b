#include "tagging/tokens/Dialect.h"

#include "tagging/tokens/SourceTokens.h"

#include <vector>

namespace tagging {

namespace {

class DialectReader {
public:
    explicit DialectReader(std::string_view text) : source(text) {}

    bool FindsCplusplus()
    {
        Token token;
        while (source.Next(token)) {
            if (token.kind == Token::kDirective)
                OnDirective(Directive(token.text));
            else if (onlyForCplusplus == 0 && Shows(token))
                return true;
            last = token;
        }
        return false;
    }

private:
    struct Branch {
        bool asksForCplusplus = false;
        bool isForCplusplus = false;
    };

    void OnDirective(const Directive& directive)
    {
        if (directive.BeginsBranches()) {
            branches.push_back(BranchOf(directive));
            onlyForCplusplus += branches.back().isForCplusplus;
        } else if (!branches.empty() && (directive.ContinuesBranches() || directive.EndsBranches())) {
            Branch& branch = branches.back();
            onlyForCplusplus -= branch.isForCplusplus;
            if (directive.EndsBranches()) {
                branches.pop_back();
                return;
            }
            branch.isForCplusplus = branch.asksForCplusplus && !branch.isForCplusplus;
            onlyForCplusplus += branch.isForCplusplus;
        }
    }

    static Branch BranchOf(const Directive& directive)
    {
        const bool asks = directive.rest.find("__cplusplus") != std::string_view::npos;
        const bool isNegative = directive.name == "ifndef" || directive.rest.find('!') != std::string_view::npos;
        return {asks, asks && !isNegative};
    }

    bool Shows(const Token& token)
    {
        if (token.Is(':'))
            return last.Is(':') && last.text.data() + 1 == token.text.data();
        if (token.kind == Token::kLiteral)
            return last.Is("extern");
        if (token.kind != Token::kWord)
            return false;
        if (token.text == "class")
            return BeginsStatement() && IsClass();
        if (token.text == "namespace")
            return BeginsStatement() && (Ahead().kind == Token::kWord || Ahead().Is('{'));
        if (token.text == "using")
            return BeginsStatement() && Ahead().kind == Token::kWord;
        if (token.text == "template")
            return Ahead().Is('<');
        if (token.text == "public" || token.text == "private" || token.text == "protected")
            return BeginsStatement() && Ahead().Is(':');
        if (token.text == "virtual" || token.text == "constexpr" || token.text == "typename")
            return BeginsStatement() && Ahead().kind == Token::kWord;
        return token.text == "operator" && Ahead().kind == Token::kMark && last.kind != Token::kMark;
    }

    // In C such words are names of variables and members: something precedes them.
    bool BeginsStatement() const
    {
        return last.text.empty() || last.kind == Token::kDirective || last.Is(';') || last.Is('{') || last.Is('}') ||
               last.Is('>') || last.Is(')') || last.Is("typedef") || last.Is("inline") || last.Is("static");
    }

    Token Ahead() const
    {
        SourceTokens ahead = source;
        Token next;
        return ahead.Next(next) ? next : Token();
    }

    // "class Name" and what can follow it.
    bool IsClass() const
    {
        SourceTokens ahead = source;
        Token name;
        Token next;
        return ahead.Next(name) && name.kind == Token::kWord && ahead.Next(next) &&
               (next.kind == Token::kWord || next.Is('{') || next.Is(':') || next.Is(';') || next.Is('<') ||
                next.Is('('));
    }

    SourceTokens source;
    Token last;
    std::vector<Branch> branches;
    unsigned onlyForCplusplus = 0; // open branches
};

} // namespace

bool IsCplusplus(std::string_view text)
{
    return DialectReader(text).FindsCplusplus();
}

} // namespace tagging
