#include "resolve/Conditions.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>

namespace resolve {

namespace {

using Value = std::optional<std::int64_t>; // nullopt: unknown

constexpr size_t kMostReplaced = size_t(1) << 20; // bytes; macros of macros may double with each step
constexpr int kDeepestExpression = 20;            // of macros and brackets in an expression

struct Predefined {
    std::string_view name;
    std::int64_t value;
};

constexpr Predefined kPredefined[] = {
    {"__GNUC__", 12},
    {"__GNUC_MINOR__", 2},
    {"__GNUC_PATCHLEVEL__", 0},
    {"__STDC__", 1},
    {"__STDC_HOSTED__", 1},
    {"__linux__", 1},
    {"__linux", 1},
    {"linux", 1},
    {"__unix__", 1},
    {"__unix", 1},
    {"unix", 1},
    {"__gnu_linux__", 1},
    {"__x86_64__", 1},
    {"__x86_64", 1},
    {"__amd64__", 1},
    {"__amd64", 1},
    {"__LP64__", 1},
    {"_LP64", 1},
    {"__ELF__", 1},
    {"__CHAR_BIT__", 8},
    {"__SIZEOF_INT__", 4},
    {"__SIZEOF_LONG__", 8},
    {"__SIZEOF_POINTER__", 8},
    {"__BYTE_ORDER__", 1234},
    {"__SIZEOF_INT128__", 16},
    {"__ORDER_LITTLE_ENDIAN__", 1234},
    {"__ORDER_BIG_ENDIAN__", 4321},
};

// Names that a configured build usually defines, by options that no source shows.
bool IsConfigured(std::string_view name)
{
    return name.starts_with("HAVE_") || name.starts_with("CONFIG_");
}

// "A_H" of a text that begins with "#ifndef A_H" and "#define A_H"; "" for none.
std::string GuardOf(const Tokens& tokens)
{
    const std::vector<PlacedDirective>& all = tokens.Directives();
    if (all.size() < 2 || all[0].next != 0)
        return "";
    const Tokens first(all[0].text.substr(1));
    const Tokens second(all[1].text.substr(1));
    const bool isGuard = first[0].text == "ifndef" && second[0].text == "define" && first[1].text == second[1].text;
    return isGuard ? std::string(first[1].text) : "";
}

} // namespace

class Conditions::Reader {
public:
    Reader(bool isCplusplus, const std::function<bool(std::string_view)>& isDefinedElsewhere)
        : isCplusplus(isCplusplus), isDefinedElsewhere(isDefinedElsewhere)
    {
    }

    void Read(const PlacedDirective& directive)
    {
        const Tokens tokens(directive.text.substr(1));
        const std::string_view kind = tokens[0].text;
        if (kind == "if" || kind == "ifdef" || kind == "ifndef")
            Open(tokens, kind);
        else if ((kind == "elif" || kind == "elifdef" || kind == "elifndef") && !chains.empty())
            Enter(Condition(tokens, kind.substr(2)));
        else if (kind == "else" && !chains.empty())
            Enter(1);
        else if (kind == "endif" && !chains.empty())
            chains.pop_back();
        else if (kind == "define")
            Define(tokens);
        else if (kind == "undef")
            Undefine(tokens[1].text);
    }

    Branch Now() const { return chains.empty() ? Branch::Taken : chains.back().now; }

private:
    struct Chain { // from #if to #endif
        Branch outer = Branch::Taken;
        Branch now = Branch::Taken;
        bool isDone = false; // a branch is taken for sure
        bool isUnsure = false;
        std::string absent; // the macro of an #ifndef: what is defined inside is its usual value
    };

    void Open(const Tokens& tokens, std::string_view kind)
    {
        const Value value = Condition(tokens, kind);
        chains.push_back({Now(), Branch::Taken, false, false, kind == "ifndef" ? std::string(tokens[1].text) : ""});
        Enter(value);
    }

    void Enter(Value value)
    {
        Chain& chain = chains.back();
        if (chain.isDone || value == 0) {
            chain.now = Branch::Left;
            return;
        }
        chain.isDone = value.has_value();
        chain.now = chain.isUnsure || !value ? Branch::Unsure : Branch::Taken;
        chain.isUnsure |= !value;
        chain.now = std::max(chain.now, chain.outer);
    }

    Value Condition(const Tokens& tokens, std::string_view kind)
    {
        if (kind == "if") {
            size_t at = 1;
            return Ternary(tokens, at, 0);
        }
        const Value defined = IsDefined(tokens[1].text);
        return kind == "ifdef" || !defined ? defined : Value(*defined == 0);
    }

    void Define(const Tokens& tokens)
    {
        const std::string name(tokens[1].text);
        const bool isFunction = tokens[2].Is('(') && tokens.Touch(1, 2);
        const size_t body = !isFunction ? 2 : tokens[2].match == kNone ? tokens.Count() : tokens[2].match + 1;
        const bool isDefault = !chains.empty() && chains.back().absent == name;
        if (Now() == Branch::Taken || (Now() == Branch::Unsure && isDefault))
            bodies[name] = body >= tokens.Count() ? "" : std::string(tokens.Text(body, tokens.Count() - 1));
        else if (Now() == Branch::Unsure && !bodies.contains(name))
            perhaps.insert(name);
    }

    void Undefine(std::string_view name)
    {
        if (Now() == Branch::Left)
            return;
        bodies.erase(std::string(name));
        if (Now() == Branch::Taken)
            gone.insert(std::string(name));
    }

    static Value PredefinedValue(std::string_view name, bool isCplusplus)
    {
        if (name == "__cplusplus")
            return isCplusplus ? Value(201703) : std::nullopt;
        if (name == "__STDC_VERSION__")
            return isCplusplus ? std::nullopt : Value(201710);
        for (const Predefined& each : kPredefined)
            if (each.name == name)
                return each.value;
        return std::nullopt;
    }

    // 1, 0, or unknown.
    Value IsDefined(std::string_view name)
    {
        if (name.empty())
            return std::nullopt;
        const std::string key(name);
        if (bodies.contains(key))
            return 1;
        if (gone.contains(key))
            return 0;
        if (PredefinedValue(name, isCplusplus))
            return 1;
        if (perhaps.contains(key))
            return std::nullopt;
        if (name == guard)
            return 0;
        return IsConfigured(name) || isDefinedElsewhere(name) ? std::nullopt : Value(0);
    }

    Value ValueOf(std::string_view name, int depth)
    {
        if (name == "true")
            return 1;
        const auto body = bodies.find(std::string(name));
        if (body != bodies.end()) {
            if (body->second.empty() || depth > kDeepestExpression || replaced > kMostReplaced)
                return std::nullopt;
            replaced += body->second.size();
            const Tokens tokens(body->second);
            size_t at = 0;
            const Value value = Ternary(tokens, at, depth + 1);
            return at == tokens.Count() ? value : std::nullopt;
        }
        if (const Value value = PredefinedValue(name, isCplusplus); value && !gone.contains(std::string(name)))
            return value;
        return IsDefined(name) == 0 ? Value(0) : std::nullopt;
    }

    Value Ternary(const Tokens& tokens, size_t& at, int depth)
    {
        const Value condition = Binary(tokens, at, 0, depth);
        if (!tokens[at].Is('?'))
            return condition;
        const Value first = Ternary(tokens, ++at, depth + 1);
        if (tokens[at].Is(':'))
            ++at;
        const Value second = Ternary(tokens, at, depth + 1);
        if (!condition)
            return std::nullopt;
        return *condition != 0 ? first : second;
    }

    // The operator at a token; its marks may be tokens of their own.
    static std::string_view OperatorAt(const Tokens& tokens, size_t at, int& strength, size_t& count)
    {
        struct Operator {
            std::string_view text;
            int strength;
        };
        static constexpr Operator kOperators[] = {
            {"||", 1}, {"&&", 2}, {"==", 6}, {"!=", 6}, {"<=", 7}, {">=", 7}, {"<<", 8}, {">>", 8}, {"|", 3},
            {"^", 4},  {"&", 5},  {"<", 7},  {">", 7},  {"+", 9},  {"-", 9},  {"*", 10}, {"/", 10}, {"%", 10},
        };
        for (const Operator& each : kOperators) {
            size_t used = 0;
            std::string_view left = each.text;
            while (!left.empty() && !tokens[at + used].text.empty() && left.starts_with(tokens[at + used].text) &&
                   (used == 0 || tokens.Touch(at + used - 1, at + used))) {
                left.remove_prefix(tokens[at + used].text.size());
                ++used;
            }
            if (used > 0 && left.empty()) {
                strength = each.strength;
                count = used;
                return each.text;
            }
        }
        return {};
    }

    Value Binary(const Tokens& tokens, size_t& at, int least, int depth)
    {
        Value left = Unary(tokens, at, depth);
        int strength = 0;
        size_t count = 0;
        while (true) {
            const std::string_view sign = OperatorAt(tokens, at, strength, count);
            if (sign.empty() || strength <= least)
                return left;
            at += count;
            left = Combined(sign, left, Binary(tokens, at, strength, depth));
        }
    }

    static Value Combined(std::string_view sign, Value left, Value right)
    {
        if (sign == "&&") {
            if (left == 0 || right == 0)
                return 0;
            return left && right ? Value(1) : std::nullopt;
        }
        if (sign == "||") {
            if ((left && *left != 0) || (right && *right != 0))
                return 1;
            return left && right ? Value(0) : std::nullopt;
        }
        if (!left || !right)
            return std::nullopt;
        return Calculated(sign, *left, *right);
    }

    static Value Calculated(std::string_view sign, std::int64_t a, std::int64_t b)
    {
        const auto wide = [](std::int64_t value) { return static_cast<std::uint64_t>(value); };
        const auto whole = [](std::uint64_t value) { return static_cast<std::int64_t>(value); };
        if (sign == "==")
            return a == b;
        if (sign == "!=")
            return a != b;
        if (sign == "<")
            return a < b;
        if (sign == ">")
            return a > b;
        if (sign == "<=")
            return a <= b;
        if (sign == ">=")
            return a >= b;
        if (sign == "+")
            return whole(wide(a) + wide(b));
        if (sign == "-")
            return whole(wide(a) - wide(b));
        if (sign == "*")
            return whole(wide(a) * wide(b));
        if (sign == "|")
            return a | b;
        if (sign == "&")
            return a & b;
        if (sign == "^")
            return a ^ b;
        if (sign == "<<" && b >= 0 && b < 63)
            return whole(wide(a) << b);
        if (sign == ">>" && b >= 0 && b < 63)
            return a >> b;
        if ((sign == "/" || sign == "%") && b > 0)
            return sign == "/" ? a / b : a % b;
        return std::nullopt;
    }

    Value Unary(const Tokens& tokens, size_t& at, int depth)
    {
        const Token& token = tokens[at];
        if (depth > kDeepestExpression || token.text.empty())
            return std::nullopt;
        if (token.Is('!') || token.Is('-') || token.Is('+') || token.Is('~')) {
            const Value value = Unary(tokens, ++at, depth + 1);
            if (!value || token.Is('+'))
                return value;
            return token.Is('!') ? (*value == 0) : token.Is('-') ? Calculated("-", 0, *value) : Value(~*value);
        }
        if (token.Is('(')) {
            const Value value = Ternary(tokens, ++at, depth + 1);
            if (tokens[at].Is(')'))
                ++at;
            return value;
        }
        ++at;
        if (!token.IsWord())
            return Number(token.text);
        if (token.text == "defined")
            return DefinedAt(tokens, at);
        if (tokens[at].Is('(')) { // a macro with arguments
            at = tokens[at].match == kNone ? tokens.Count() : tokens[at].match + 1;
            return bodies.contains(std::string(token.text)) ? ValueOf(token.text, depth) : std::nullopt;
        }
        return ValueOf(token.text, depth);
    }

    Value DefinedAt(const Tokens& tokens, size_t& at)
    {
        const bool hasBrackets = tokens[at].Is('(');
        at += hasBrackets ? 1 : 0;
        const Value value = IsDefined(tokens[at].text);
        at += hasBrackets && tokens[at + 1].Is(')') ? 2 : 1;
        return value;
    }

    static Value Number(std::string_view text)
    {
        int base = 10;
        if (text.starts_with("0x") || text.starts_with("0X")) {
            base = 16;
            text.remove_prefix(2);
        } else if (text.starts_with('0') && text.size() > 1) {
            base = 8;
        }
        std::int64_t value = 0;
        const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), value, base);
        const std::string_view rest(end, static_cast<size_t>(text.data() + text.size() - end));
        if (problem != std::errc() || rest.find_first_not_of("uUlL") != std::string_view::npos)
            return std::nullopt;
        return value;
    }

public:
    std::string guard; // what the header is wrapped in: not defined before it

private:
    const bool isCplusplus;
    const std::function<bool(std::string_view)>& isDefinedElsewhere;
    std::vector<Chain> chains;
    std::map<std::string, std::string> bodies; // of macros that are defined here; "" for an unknown one
    std::set<std::string> perhaps;             // defined in a branch that may be taken
    std::set<std::string> gone;
    size_t replaced = 0; // bytes of bodies that were read in place of names
};

Conditions::Conditions(const Tokens& tokens, bool isCplusplus,
                       const std::function<bool(std::string_view)>& isDefinedElsewhere)
{
    Reader reader(isCplusplus, isDefinedElsewhere);
    reader.guard = GuardOf(tokens);
    for (const PlacedDirective& directive : tokens.Directives()) {
        const Branch before = reader.Now();
        reader.Read(directive);
        if (reader.Now() != before)
            changes.emplace_back(directive.line, reader.Now());
    }
}

Branch Conditions::At(unsigned line) const
{
    const auto after = std::upper_bound(changes.begin(), changes.end(), line,
                                        [](unsigned wanted, const auto& change) { return wanted < change.first; });
    return after == changes.begin() ? Branch::Taken : std::prev(after)->second;
}

} // namespace resolve
