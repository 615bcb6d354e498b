#include "resolve/Locals.h"

#include "resolve/Blocks.h"
#include "resolve/KnownStatements.h"

#include <algorithm>

namespace resolve {

namespace {

using tagging::SymbolKind;

constexpr size_t kMostTokens = 200'000; // of one function; generated tables are longer

// Walks from a place outwards.
class Walk {
public:
    Walk(const Tokens& tokens, KnownStatements& known, size_t place, const std::function<bool(const LocalName&)>& each)
        : tokens(tokens), known(known), place(place), each(each)
    {
    }

    void Run()
    {
        size_t inner = place;
        for (size_t open = tokens[place].parent; open != kNone && goesOn; open = tokens[inner].parent) {
            if (tokens[open].Is('{'))
                inner = LeaveBlock(open, inner);
            else
                inner = LeaveBracket(open);
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
            Tell(known.Parameters(parameters), open);
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
        Tell(known.Parameters(parameters), open);
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

    size_t LeaveBracket(size_t open)
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
            Tell(known.Header(open), open);
        } else if (!IsInFunction(tokens, open) || before.Is(']') || before.Is('^')) {
            // "A(int n) : count(n|)": what is in parentheses here is an expression.
            const bool isInitializer = tokens[open - 2].Is(':') || tokens[open - 2].Is(',');
            if (isInitializer)
                Groups(HeadBefore(open), open);
            else
                Tell(Strong(known.Parameters(open)), open);
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

    // The statements of a block that begin before 'inner', in reverse order.
    void Statements(size_t open, size_t inner)
    {
        if (inner - open > kMostTokens)
            return;
        StatementSeries& block = known.Block(open, inner);
        Unfinished(block.LastStepAt(inner), inner, open);
        size_t count = block.CountBefore(inner);
        while (goesOn && (count = known.Declaring(block, count)) > 0)
            Tell(block[--count].declared, open);
    }

    // The statement that the place is in: the headers of "for", "if" and others before the place count.
    void Unfinished(size_t begin, size_t inner, size_t open)
    {
        const size_t first = BehindLabels(tokens, begin, place);
        StatementSeries& headers = known.Headers(begin, first, inner);
        const size_t last = headers.LastStepAt(inner);
        LoopOfMacro(last, inner, open);
        // A declaration's own name is visible in its initialiser.
        if (last <= place)
            Tell(known.Unfinished(last), open);
        size_t count = headers.CountBefore(inner);
        while (goesOn && (count = known.DeclaringHeader(headers, count)) > 0) {
            const StatementSeries::Part& header = headers[--count];
            Tell(header.declared, header.range.begin);
        }
    }

    // "foreach (Item x, items)"
    void LoopOfMacro(size_t begin, size_t inner, size_t open)
    {
        const size_t parenthesis = tokens[begin + 1].text == "constexpr" ? begin + 2 : begin + 1;
        const size_t close = tokens[parenthesis].match;
        if (!tokens[begin].IsWord() || IsControlWord(tokens[begin]) || !tokens[parenthesis].Is('(') || close >= inner)
            return;
        if (tokens[close + 1].Is('{') || tokens[close + 1].IsWord())
            Tell(Strong(known.Parameters(parenthesis)), open);
    }

    static std::vector<Declared> Strong(std::vector<Declared> declared)
    {
        std::erase_if(declared, [](const Declared& each) { return each.isWeak; });
        return declared;
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
                Tell(Strong(known.Parameters(i)), tokens[inner].parent);
                i = tokens[i].match;
            }
    }

    const Tokens& tokens;
    KnownStatements& known;
    const size_t place;
    const std::function<bool(const LocalName&)>& each;
    bool goesOn = true;
};

} // namespace

void ForEachLocal(const Tokens& tokens, size_t place, const std::function<bool(const LocalName&)>& each)
{
    KnownStatements known(tokens, "");
    Walk(tokens, known, place, each).Run();
}

std::optional<LocalName> FindLocal(const Tokens& tokens, size_t place)
{
    return FindLocal(tokens, place, tokens[place].text);
}

std::optional<LocalName> FindLocal(const Tokens& tokens, size_t place, std::string_view name)
{
    KnownStatements known(tokens, name);
    return FindLocal(tokens, place, name, known);
}

std::optional<LocalName> FindLocal(const Tokens& tokens, size_t place, std::string_view name, KnownStatements& known)
{
    std::optional<LocalName> found;
    const auto take = [&](const LocalName& local) {
        if (tokens[local.name].text != name)
            return true;
        found = local;
        return false;
    };
    Walk(tokens, known, place, take).Run();
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

size_t BodyOfLabels(const Tokens& tokens, size_t place)
{
    size_t body = kNone;
    for (size_t open = tokens[place].parent; open != kNone; open = tokens[open].parent)
        if (tokens[open].Is('{'))
            body = KindOfBlock(tokens, open) == BlockKind::Scope ? body : open;
    return body;
}

std::optional<LocalName> FindLabel(const Tokens& tokens, size_t place)
{
    return FindLabel(tokens, BodyOfLabels(tokens, place), tokens[place].text);
}

std::optional<LocalName> FindLabel(const Tokens& tokens, size_t body, std::string_view name)
{
    if (body == kNone || tokens[body].match == kNone)
        return std::nullopt;
    for (size_t i = body + 1; i < tokens[body].match; ++i) {
        const Token& before = tokens[i - 1];
        const bool begins = before.Is(';') || before.Is('{') || before.Is('}') || before.Is(':') || before.Is(')');
        if (begins && tokens[i].IsWord() && tokens[i].text == name && tokens[i + 1].Is(':')) {
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
