#include "resolve/KnownStatements.h"

#include "resolve/Blocks.h"

#include <algorithm>
#include <iterator>

namespace resolve {

bool IsControlWord(const Token& token)
{
    return token.text == "for" || token.text == "if" || token.text == "while" || token.text == "switch" ||
           token.text == "catch";
}

size_t BehindLabels(const Tokens& tokens, size_t begin, size_t end)
{
    size_t i = begin;
    for (;;) {
        if (tokens[i].text == "case" || tokens[i].text == "default") {
            while (i < end && !tokens[i].Is(':') && !tokens[i].Is(';'))
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

size_t StatementSeries::CountBefore(size_t inner) const
{
    const auto behind = std::ranges::upper_bound(parts, inner, {}, &Part::behind);
    return static_cast<size_t>(behind - parts.begin());
}

size_t StatementSeries::LastStepAt(size_t inner) const
{
    const auto behind = std::ranges::upper_bound(steps, inner);
    return behind == steps.begin() ? steps.front() : *std::prev(behind);
}

size_t StatementSeries::Declaring(size_t count, const Reader& read)
{
    size_t found = count;
    while (found > 0) {
        Part& part = parts[found - 1];
        if (part.declaring == kNone) {
            part.declared = read(part);
            part.declaring = part.declared.empty() ? found - 1 : found;
        }
        if (part.declaring == found)
            break;
        found = part.declaring;
    }
    // The next question begins a few parts further on, and skips all that this one has seen.
    if (count > 0)
        parts[count - 1].declaring = found;
    return found;
}

StatementSeries& KnownStatements::Block(size_t open, size_t inner)
{
    StatementSeries& block = blocks.try_emplace(open, open + 1).first->second;
    for (size_t& i = block.next; i < inner; ++i) {
        const Token& token = tokens[i];
        const bool opens = token.match != kNone && (token.Is('{') || token.match > i);
        if (token.Is(';')) {
            block.Add({block.LastStepAt(i), i}, i + 1);
            block.Step(i + 1);
        } else if (opens) {
            if (token.match >= inner)
                break;
            const bool isBlock = token.Is('{');
            i = token.match;
            if (isBlock && EndsStatement(i))
                block.Step(i + 1);
        }
    }
    return block;
}

bool KnownStatements::EndsStatement(size_t close) const
{
    const Token& after = tokens[close + 1];
    if (after.Is(';') || after.Is(',') || after.Is(')') || after.Is('.') || after.Is('(') || after.text == "else")
        return false;
    const BlockKind kind = KindOfBlock(tokens, tokens[close].match);
    return kind == BlockKind::Statement || kind == BlockKind::Function;
}

StatementSeries& KnownStatements::Headers(size_t begin, size_t first, size_t inner)
{
    StatementSeries& series = headers.try_emplace({begin, first}, first).first->second;
    size_t& i = series.next;
    while (i < inner) {
        if (tokens[i].text == "else" || tokens[i].text == "do" || tokens[i].text == "try") {
            series.Step(++i);
            continue;
        }
        if (tokens[i].Is('{') && tokens[i].match != kNone && tokens[i].match < inner && i > begin) {
            i = tokens[i].match + 1; // "if (int n = f()) { } else"
            series.Step(i);
            continue;
        }
        const size_t open = tokens[i + 1].text == "constexpr" ? i + 2 : i + 1;
        if (!IsControlWord(tokens[i]) || !tokens[open].Is('(') || tokens[open].match == kNone ||
            tokens[open].match >= inner)
            break;
        i = tokens[open].match + 1;
        series.Add({open, i}, i);
        series.Step(i);
    }
    return series;
}

size_t KnownStatements::Declaring(StatementSeries& block, size_t count)
{
    return block.Declaring(count, [this](const StatementSeries::Part& part) {
        const size_t begin = BehindLabels(tokens, part.range.begin, part.range.end);
        return begin < part.range.end ? Kept(ReadStatement(tokens, {begin, part.range.end})) : std::vector<Declared>();
    });
}

size_t KnownStatements::DeclaringHeader(StatementSeries& headers, size_t count)
{
    return headers.Declaring(
        count, [this](const StatementSeries::Part& part) { return Kept(DeclaredInHeader(part.range.begin)); });
}

std::vector<Declared> KnownStatements::DeclaredInHeader(size_t open) const
{
    const size_t close = tokens[open].match == kNone ? tokens.Count() : tokens[open].match;
    const std::string_view word = tokens[open - 1].text;
    const bool needsInitializer = word == "if" || word == "while" || word == "switch";
    std::vector<Declared> all;
    size_t begin = open + 1;
    for (size_t i = begin; i <= close; ++i) {
        if (i < close && !tokens[i].Is(';')) {
            if (tokens[i].match != kNone && tokens[i].match > i)
                i = tokens[i].match;
            continue;
        }
        // "if (flags & kMask)" declares nothing.
        for (const Declared& declared : ReadStatement(tokens, {begin, i}))
            if (!needsInitializer || !declared.initializer.IsEmpty())
                all.push_back(declared);
        begin = i + 1;
    }
    return all;
}

size_t KnownStatements::EndOfStatement(size_t begin) const
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

std::vector<Declared> KnownStatements::Kept(std::vector<Declared> declared)
{
    ++readings;
    if (!name.empty())
        std::erase_if(declared, [this](const Declared& each) { return tokens[each.name].text != name; });
    return declared;
}

const std::vector<Declared>& KnownStatements::Once(What what, size_t index,
                                                   const std::function<std::vector<Declared>()>& read)
{
    const auto [found, isNew] = others.try_emplace({what, index});
    if (isNew)
        found->second = Kept(read());
    return found->second;
}

const std::vector<Declared>& KnownStatements::Header(size_t open)
{
    return Once(What::Header, open, [&] { return DeclaredInHeader(open); });
}

const std::vector<Declared>& KnownStatements::Parameters(size_t open)
{
    return Once(What::Parameters, open, [&] { return ReadParameters(tokens, open); });
}

const std::vector<Declared>& KnownStatements::Unfinished(size_t begin)
{
    return Once(What::Unfinished, begin, [&] { return ReadStatement(tokens, {begin, EndOfStatement(begin)}); });
}

} // namespace resolve
