#include "resolve/Locals.h"

#include "resolve/Blocks.h"

#include <algorithm>

namespace resolve {

namespace {

using tagging::SymbolKind;

constexpr size_t kMostTokens = 200'000; // of one function; generated tables are longer

bool IsControlWord(const Token& token)
{
    return token.text == "for" || token.text == "if" || token.text == "while" || token.text == "switch" ||
           token.text == "catch";
}

// Walks from a place outwards.
class Walk {
public:
    Walk(const Tokens& tokens, size_t place, const std::function<bool(const LocalName&)>& each)
        : tokens(tokens), place(place), each(each)
    {
    }

    void Run()
    {
        size_t inner = place;
        for (size_t open = tokens[place].parent; open != kNone && goesOn; open = tokens[inner].parent) {
            if (tokens[open].Is('{'))
                inner = LeaveBlock(open, inner);
            else
                inner = LeaveBracket(open, inner);
            if (inner == kNone)
                return;
        }
        if (goesOn)
            AtTopLevel(inner);
    }

private:
    void Tell(const std::vector<Declared>& declared, size_t scope)
    {
        for (bool weak : {false, true})
            for (size_t i = declared.size(); i-- > 0 && goesOn;)
                if (declared[i].name <= place && declared[i].isWeak == weak)
                    goesOn = each(LocalName{declared[i], scope});
    }

    // Returns the token from which the walk continues outwards; kNone at the end.
    size_t LeaveBlock(size_t open, size_t inner)
    {
        const BlockKind kind = KindOfBlock(tokens, open);
        if (kind == BlockKind::Scope) {
            TemplateHead(HeadBefore(inner));
            TemplateHead(HeadOfBlock(tokens, open));
            return IsInFunction(tokens, open) ? kNone : LeaveScope(open);
        }
        if (kind == BlockKind::Value)
            return open;
        Statements(open, inner);
        if (kind == BlockKind::Statement)
            return open;
        return kind == BlockKind::Lambda ? LeaveLambda(open) : LeaveFunction(open);
    }

    // Outside of functions only template parameters are visible from inside.
    size_t LeaveScope(size_t open)
    {
        for (size_t outer = tokens[open].parent; outer != kNone; outer = tokens[outer].parent)
            TemplateHead(HeadOfBlock(tokens, outer));
        return kNone;
    }

    size_t LeaveLambda(size_t open)
    {
        const size_t parameters = ParametersOfBlock(tokens, open);
        if (parameters != kNone && parameters < open)
            Tell(ReadParameters(tokens, parameters), open);
        const size_t begin = BeginOfLambda(tokens, open);
        if (begin != kNone && tokens[begin].Is('['))
            Captures(begin, open);
        return begin == kNone ? open : begin;
    }

    // "[count = 0]" declares; "[count]" only mentions.
    void Captures(size_t open, size_t scope)
    {
        for (const Tokens::Range& part : tokens.Parts(open + 1, tokens[open].match)) {
            const size_t name = tokens[part.begin].Is('&') ? part.begin + 1 : part.begin;
            if (!tokens[name].IsWord() || !tokens[name + 1].Is('='))
                continue;
            Declared capture;
            capture.name = name;
            capture.initializer = {name + 2, part.end};
            Tell({capture}, scope);
        }
    }

    size_t LeaveFunction(size_t open)
    {
        const size_t head = HeadOfBlock(tokens, open);
        if (tokens[head].Is('-') || tokens[head].Is('+')) {
            Tell(ReadMethodParameters(tokens, {head, open}), open);
            return kNone;
        }
        const size_t parameters = ParametersOfBlock(tokens, open);
        if (parameters == kNone)
            return kNone;
        const size_t close = tokens[parameters].match;
        if (close != kNone && close + 1 < open)
            OldStyle(close + 1, open);
        Tell(ReadParameters(tokens, parameters), open);
        TemplateHead(std::min(head, parameters));
        return LeaveScope(open);
    }

    // "int f(a, b) int a; char *b; {"
    void OldStyle(size_t begin, size_t open)
    {
        if (!tokens[open - 1].Is(';'))
            return;
        for (size_t i = begin; i < open; ++i) {
            if (!tokens[i].Is(';'))
                continue;
            std::vector<Declared> declared = ReadStatement(tokens, {begin, i});
            for (Declared& parameter : declared)
                parameter.kind = SymbolKind::Parameter;
            Tell(declared, open);
            begin = i + 1;
        }
    }

    void TemplateHead(size_t head)
    {
        while (goesOn && tokens[head].text == "template" && tokens[head + 1].Is('<')) {
            Tell(ReadTemplateParameters(tokens, head + 1), tokens[head].parent);
            const size_t close = tokens.AngleEnd(head + 1);
            if (close == kNone)
                return;
            head = close + 1;
        }
    }

    size_t LeaveBracket(size_t open, size_t inner)
    {
        if (tokens[open].Is('[')) {
            const size_t close = tokens[open].match;
            if (close != kNone && tokens[place - 1].parent == open && tokens[place + 1].Is('='))
                Captures(open, open);
            if (tokens[open - 1].text == "auto" || (tokens[open - 1].Is('&') && tokens[open - 2].text == "auto") ||
                (tokens[open - 1].Is('&') && tokens[open - 3].text == "auto"))
                InDeclaration(open);
            return open;
        }
        const Token& before = tokens[open - 1];
        if (IsControlWord(before)) {
            Header(open, inner);
        } else if (!IsInFunction(tokens, open) || before.Is(']') || before.Is('^')) {
            // "A(int n) : count(n|)": what is in parentheses here is an expression.
            const bool isInitializer = tokens[open - 2].Is(':') || tokens[open - 2].Is(',');
            if (isInitializer)
                Groups(HeadBefore(open), open);
            else
                Tell(Strong(ReadParameters(tokens, open)), open);
            TemplateHead(HeadBefore(open));
        } else if (tokens[open + 1].Is('*') || tokens[open + 1].Is('^')) {
            InDeclaration(open);
        }
        return open;
    }

    size_t HeadBefore(size_t index) const
    {
        size_t begin = index;
        while (begin > 0 && index - begin < 300 && !tokens[begin - 1].Is(';') && !tokens[begin - 1].Is('}') &&
               begin - 1 != tokens[index].parent && !IsAccess(begin - 1)) {
            --begin;
            if (tokens[begin].match != kNone && tokens[begin].match < begin)
                begin = tokens[begin].match;
        }
        return begin;
    }

    bool IsAccess(size_t colon) const
    {
        const std::string_view word = tokens[colon - 1].text;
        return tokens[colon].Is(':') && (word == "public" || word == "private" || word == "protected");
    }

    // The names of the statement around an inner bracket, "int (*callback)(int)": they are at the place itself.
    void InDeclaration(size_t open)
    {
        const size_t begin = HeadBefore(open);
        size_t end = open;
        while (end < tokens.Count() && !tokens[end].Is(';') && end < open + 300)
            end = tokens[end].match != kNone && tokens[end].match > end ? tokens[end].match + 1 : end + 1;
        Tell(ReadStatement(tokens, {begin, end}), tokens[open].parent);
    }

    void Header(size_t open, size_t inner)
    {
        const size_t close = tokens[open].match == kNone ? tokens.Count() : tokens[open].match;
        const size_t end = std::max(inner + 1, close);
        size_t begin = open + 1;
        std::vector<std::vector<Declared>> all;
        for (size_t i = begin; i <= std::min(end, close); ++i) {
            if (i < close && !tokens[i].Is(';')) {
                if (tokens[i].match != kNone && tokens[i].match > i)
                    i = tokens[i].match;
                continue;
            }
            all.push_back(ReadStatement(tokens, {begin, i}));
            // "if (flags & kMask)" declares nothing.
            const std::string_view word = tokens[open - 1].text;
            if (word == "if" || word == "while" || word == "switch")
                std::erase_if(all.back(), [](const Declared& each) { return each.initializer.IsEmpty(); });
            begin = i + 1;
        }
        for (size_t i = all.size(); i-- > 0;)
            Tell(all[i], open);
    }

    // The statements of a block that begin before 'inner', in reverse order.
    void Statements(size_t open, size_t inner)
    {
        if (inner - open > kMostTokens)
            return;
        std::vector<Tokens::Range> statements;
        size_t begin = open + 1;
        size_t i = begin;
        for (; i < inner; ++i) {
            const Token& token = tokens[i];
            if (token.Is(';')) {
                statements.push_back({begin, i});
                begin = i + 1;
            } else if (token.Is('{') && token.match != kNone) {
                if (token.match >= inner)
                    break;
                i = token.match;
                if (EndsStatement(token.match))
                    begin = i + 1;
            } else if (token.match != kNone && token.match > i) {
                if (token.match >= inner)
                    break;
                i = token.match;
            }
        }
        Unfinished(begin, inner, open);
        for (size_t s = statements.size(); s-- > 0 && goesOn;)
            Statement(statements[s], open);
    }

    bool EndsStatement(size_t close) const
    {
        const Token& after = tokens[close + 1];
        if (after.Is(';') || after.Is(',') || after.Is(')') || after.Is('.') || after.Is('(') || after.text == "else")
            return false;
        const BlockKind kind = KindOfBlock(tokens, tokens[close].match);
        return kind == BlockKind::Statement || kind == BlockKind::Function;
    }

    // The statement that the place is in: the headers of "for", "if" and others before the place count.
    void Unfinished(size_t begin, size_t inner, size_t open)
    {
        std::vector<std::vector<Declared>> headers;
        size_t i = SkipLabels(begin);
        while (i < inner) {
            if (tokens[i].text == "else" || tokens[i].text == "do" || tokens[i].text == "try") {
                ++i;
                continue;
            }
            if (tokens[i].Is('{') && tokens[i].match != kNone && tokens[i].match < inner && i > begin) {
                i = tokens[i].match + 1; // "if (int n = f()) { } else"
                continue;
            }
            size_t parenthesis = i + 1;
            if (tokens[parenthesis].text == "constexpr")
                ++parenthesis;
            if (!tokens[i].IsWord() || !tokens[parenthesis].Is('(') || tokens[parenthesis].match == kNone ||
                tokens[parenthesis].match >= inner)
                break;
            if (IsControlWord(tokens[i])) {
                headers.push_back({{.name = parenthesis, .type = {}, .initializer = {}}});
            } else {
                const Token& after = tokens[tokens[parenthesis].match + 1];
                if (after.Is('{') || after.IsWord()) // "foreach (Item x, items)"
                    Tell(Strong(ReadParameters(tokens, parenthesis)), open);
                break;
            }
            i = tokens[parenthesis].match + 1;
        }
        // A declaration's own name is visible in its initialiser.
        if (i <= place)
            Tell(ReadStatement(tokens, {i, EndOfStatement(i)}), open);
        for (size_t h = headers.size(); h-- > 0;)
            Header(headers[h].front().name, inner);
    }

    static std::vector<Declared> Strong(std::vector<Declared> declared)
    {
        std::erase_if(declared, [](const Declared& each) { return each.isWeak; });
        return declared;
    }

    size_t EndOfStatement(size_t begin) const
    {
        const size_t parent = tokens[begin].parent;
        for (size_t i = begin; i < tokens.Count(); ++i) {
            if (tokens[i].Is(';') || tokens[i].match == parent || (tokens[i].Is('}') && tokens[i].match < begin))
                return i;
            if (tokens[i].match != kNone && tokens[i].match > i)
                i = tokens[i].match;
        }
        return tokens.Count();
    }

    size_t SkipLabels(size_t i) const
    {
        for (;;) {
            if (tokens[i].text == "case" || tokens[i].text == "default") {
                while (i < place && !tokens[i].Is(':') && !tokens[i].Is(';'))
                    ++i;
                if (!tokens[i].Is(':'))
                    return i;
                ++i;
            } else if (tokens[i].IsWord() && tokens[i + 1].Is(':') && !tokens[i + 2].Is(':')) {
                i += 2;
            } else {
                return i;
            }
        }
    }

    void Statement(Tokens::Range statement, size_t open)
    {
        const size_t begin = SkipLabels(statement.begin);
        if (begin < statement.end)
            Tell(ReadStatement(tokens, {begin, statement.end}), open);
    }

    // Parameters of a prototype, and template parameters before a declaration.
    void AtTopLevel(size_t inner)
    {
        if (inner == place || tokens[inner].Is('('))
            TemplateHead(HeadBefore(inner));
        const size_t head = HeadBefore(inner);
        if (tokens[head].Is('-') || tokens[head].Is('+')) {
            size_t end = inner;
            while (end < tokens.Count() && !tokens[end].Is(';') && !tokens[end].Is('{'))
                ++end;
            Tell(ReadMethodParameters(tokens, {head, end}), tokens[end].Is('{') ? end : kNone);
        }
        // The result's type behind the parameters, and a constructor's initialisers: "A::A(int n) : count(n|)".
        Groups(head, inner);
    }

    void Groups(size_t head, size_t inner)
    {
        for (size_t i = head; i < inner; ++i)
            if (tokens[i].Is('(') && tokens[i].match != kNone && tokens[i].match < inner) {
                Tell(Strong(ReadParameters(tokens, i)), tokens[inner].parent);
                i = tokens[i].match;
            }
    }

    const Tokens& tokens;
    const size_t place;
    const std::function<bool(const LocalName&)>& each;
    bool goesOn = true;
};

} // namespace

void ForEachLocal(const Tokens& tokens, size_t place, const std::function<bool(const LocalName&)>& each)
{
    Walk(tokens, place, each).Run();
}

std::optional<LocalName> FindLocal(const Tokens& tokens, size_t place)
{
    return FindLocal(tokens, place, tokens[place].text);
}

std::optional<LocalName> FindLocal(const Tokens& tokens, size_t place, std::string_view name)
{
    std::optional<LocalName> found;
    ForEachLocal(tokens, place, [&](const LocalName& local) {
        if (tokens[local.name].text != name)
            return true;
        found = local;
        return false;
    });
    return found;
}

std::optional<LocalName> FindLoosely(const Tokens& tokens, size_t place)
{
    constexpr size_t kMost = 30'000;
    constexpr size_t kLongestStatement = 300;
    for (size_t i = place; i-- > 0 && i + kMost > place;) {
        if (tokens[i].text != tokens[place].text || !tokens[i].IsWord())
            continue;
        size_t begin = i;
        while (begin > 0 && i - begin < kLongestStatement && !tokens[begin - 1].Is(';') && !tokens[begin - 1].Is('{') &&
               !tokens[begin - 1].Is('}'))
            --begin;
        size_t end = i;
        while (end < tokens.Count() && !tokens[end].Is(';') && end - i < kLongestStatement)
            ++end;
        for (const Declared& declared : ReadStatement(tokens, {begin, end}))
            if (declared.name == i)
                return LocalName{declared, kNone};
    }
    return std::nullopt;
}

std::optional<LocalName> FindLabel(const Tokens& tokens, size_t place)
{
    size_t body = kNone;
    for (size_t open = tokens[place].parent; open != kNone; open = tokens[open].parent)
        if (tokens[open].Is('{'))
            body = KindOfBlock(tokens, open) == BlockKind::Scope ? body : open;
    if (body == kNone || tokens[body].match == kNone)
        return std::nullopt;
    for (size_t i = body + 1; i < tokens[body].match; ++i) {
        const Token& before = tokens[i - 1];
        const bool begins = before.Is(';') || before.Is('{') || before.Is('}') || before.Is(':') || before.Is(')');
        if (begins && tokens[i].IsWord() && tokens[i].text == tokens[place].text && tokens[i + 1].Is(':')) {
            LocalName label;
            label.name = i;
            label.kind = SymbolKind::Label;
            label.scope = body;
            return label;
        }
    }
    return std::nullopt;
}

} // namespace resolve
