#include "resolve/Operand.h"

#include "resolve/Blocks.h"

namespace resolve {

size_t BeginOfOperand(const Tokens& tokens, size_t end)
{
    size_t i = end;
    for (int steps = 0; i > 0 && steps < 500; ++steps) {
        size_t last = i - 1;
        const Token& token = tokens[last];
        if (token.match != kNone && token.match < last && !token.Is('}')) {
            i = token.match;
            const Token& before = tokens[i - 1];
            const bool goesOn = (before.IsWord() && !IsStatementWord(before.text)) || before.Is(')') ||
                                before.Is(']') || before.Is('>') || before.Is('}');
            if (token.Is(']') && !goesOn)
                return i; // a message
            if (!goesOn || i == 0)
                return tokens[i - 1].Is('@') ? i - 1 : i;
            if (before.Is('>')) {
                const size_t open = tokens.AngleBegin(i - 1);
                if (open == kNone)
                    return i;
                i = open;
            }
            if (before.Is(')') && token.Is(')') && tokens[before.match - 1].IsMark("=")) // "(a)(b)"
                return i;
            continue;
        }
        if (token.Is('}') && token.match != kNone) {
            i = token.match;
            if (tokens[i - 1].Is('@'))
                return i - 1;
            continue;
        }
        if (token.Is('>')) {
            const size_t open = tokens.AngleBegin(last);
            if (open == kNone)
                return i;
            i = open;
            continue;
        }
        if (!token.IsWord() && token.kind != Token::kLiteral && token.kind != Token::kNumber)
            return i;
        if (token.IsWord() && IsStatementWord(token.text))
            return i;
        i = last;
        while (tokens[i - 1].kind == Token::kLiteral && token.kind == Token::kLiteral)
            --i;
        if (tokens[i - 1].Is('@'))
            return i - 1;
        const Token& before = tokens[i - 1];
        if (!before.Is('.') && before.text != "->" && !before.IsMark("::"))
            return i;
        if (i < 2)
            return i;
        const Token& further = tokens[i - 2];
        const bool isOperand = further.IsWord() || further.Is(')') || further.Is(']') || further.Is('>') ||
                               further.Is('}') || further.kind == Token::kLiteral;
        if (!isOperand || (further.IsWord() && IsStatementWord(further.text)))
            return before.IsMark("::") ? i - 1 : i;
        i -= 1;
    }
    return i;
}

} // namespace resolve
