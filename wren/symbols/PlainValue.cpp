#include "wren/symbols/PlainValue.h"

#include "tagging/tokens/SourceTokens.h"

#include <charconv>
#include <string>
#include <vector>

namespace wren {

namespace {

using tagging::Token;
using Value = std::optional<long long>;

constexpr size_t kMostTokens = 200;
constexpr int kDeepestNesting = 50;

Value NumberOf(std::string_view text)
{
    std::string digits;
    for (const char c : text)
        if (c != '\'')
            digits += c;
    while (!digits.empty() && std::string_view("uUlL").find(digits.back()) != std::string_view::npos)
        digits.pop_back();
    int base = 10;
    size_t skipped = 0;
    if (digits.starts_with("0x") || digits.starts_with("0X")) {
        base = 16;
        skipped = 2;
    } else if (digits.starts_with("0b") || digits.starts_with("0B")) {
        base = 2;
        skipped = 2;
    } else if (digits.size() > 1 && digits[0] == '0') {
        base = 8;
    }
    long long value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, problem] = std::from_chars(digits.data() + skipped, end, value, base);
    return problem == std::errc() && stop == end ? Value(value) : std::nullopt;
}

class Reader {
public:
    explicit Reader(std::string_view text)
    {
        tagging::SourceTokens source(text);
        for (Token token; tokens.size() < kMostTokens && source.Next(token);)
            tokens.push_back(token);
    }

    Value All()
    {
        if (tokens.empty() || tokens.size() == kMostTokens)
            return std::nullopt;
        const Value value = Binary(0);
        return at == tokens.size() ? value : std::nullopt;
    }

private:
    static constexpr int kLevels = 6; // | ^ & shift sum product

    bool Take(std::string_view marks)
    {
        for (size_t i = 0; i < marks.size(); ++i)
            if (at + i >= tokens.size() || !tokens[at + i].Is(marks[i]))
                return false;
        at += marks.size();
        return true;
    }

    // The operator of the level that stands here; ' ' for none. "<" and ">" are the shifts.
    char Operator(int level)
    {
        constexpr std::string_view kSigns[] = {"|", "^", "&", "", "+-", "*/%"};
        if (level == 3)
            return Take("<<") ? '<' : Take(">>") ? '>' : ' ';
        for (const char sign : kSigns[level])
            if (at < tokens.size() && tokens[at].Is(sign) &&
                !(at + 1 < tokens.size() && tokens[at + 1].Is(sign) && level < 3)) {
                ++at;
                return sign;
            }
        return ' ';
    }

    static Value Applied(char sign, long long a, long long b)
    {
        long long result = 0;
        switch (sign) {
        case '|':
            return a | b;
        case '^':
            return a ^ b;
        case '&':
            return a & b;
        case '<':
            if (b < 0 || b > 62 || a < 0 || a > (0x7fff'ffff'ffff'ffffLL >> b))
                return std::nullopt;
            return a << b;
        case '>':
            return b < 0 || b > 63 ? Value() : Value(a >> b);
        case '+':
            return __builtin_add_overflow(a, b, &result) ? Value() : Value(result);
        case '-':
            return __builtin_sub_overflow(a, b, &result) ? Value() : Value(result);
        case '*':
            return __builtin_mul_overflow(a, b, &result) ? Value() : Value(result);
        default:
            break;
        }
        if (b == 0 || b == -1)
            return std::nullopt;
        return sign == '/' ? a / b : a % b;
    }

    Value Binary(int level)
    {
        Value value = level + 1 < kLevels ? Binary(level + 1) : Unary();
        while (value) {
            const char sign = Operator(level);
            if (sign == ' ')
                return value;
            const Value right = level + 1 < kLevels ? Binary(level + 1) : Unary();
            value = right ? Applied(sign, *value, *right) : std::nullopt;
        }
        return value;
    }

    Value Unary()
    {
        if (++depth > kDeepestNesting || at == tokens.size())
            return std::nullopt;
        Value value;
        if (Take("(")) {
            value = Binary(0);
            if (!Take(")"))
                value.reset();
        } else if (Take("-")) {
            value = Unary();
            value = value ? Applied('-', 0, *value) : value;
        } else if (Take("~")) {
            value = Unary();
            value = value ? Value(~*value) : value;
        } else if (tokens[at].kind == Token::kNumber) {
            value = NumberOf(tokens[at++].text);
        }
        --depth;
        return value;
    }

    std::vector<Token> tokens;
    size_t at = 0;
    int depth = 0;
};

} // namespace

std::optional<long long> PlainValue(std::string_view expression)
{
    return Reader(expression).All();
}

} // namespace wren
