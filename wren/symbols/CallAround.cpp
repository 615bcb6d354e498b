#include "wren/symbols/CallAround.h"

namespace wren {

namespace {

using resolve::kNone;
using resolve::Tokens;

// Whether the brace opens the body of a lambda, a block or a function: what surrounds it is no call to its statements.
bool IsBody(const Tokens& tokens, size_t brace)
{
    const resolve::Token& before = tokens[brace - 1];
    return before.IsMark(")") || before.IsMark("]") || before.IsMark(";") || before.IsMark("}") || before.IsMark("^") ||
           before.Is("mutable") || before.Is("noexcept") || before.Is("else") || before.Is("do");
}

// The word that a list of arguments belongs to: "f" of "f(" and of "f<int>("; kNone for a cast, "if (" or "(a + b)".
size_t CalleeBefore(const Tokens& tokens, size_t open)
{
    if (open == 0)
        return kNone;
    size_t name = open - 1;
    if (tokens[name].IsMark(">"))
        name = tokens.AngleBegin(name) == kNone ? kNone : tokens.AngleBegin(name) - 1;
    if (name == kNone || !tokens[name].IsWord())
        return kNone;
    const bool isCallable = !resolve::IsStatementWord(tokens[name].text) && !resolve::IsKeyword(tokens[name].text);
    return isCallable || tokens[name].Is("this") ? name : kNone;
}

// Commas at the level of the bracket, before a token; and all of them.
void CountArguments(const Tokens& tokens, size_t open, size_t end, size_t place, CallAround& call)
{
    for (size_t at = open + 1; at < end; ++at) {
        if (tokens[at].parent != (tokens[open].IsMark("<") ? tokens[open].parent : open) || !tokens[at].IsMark(","))
            continue;
        call.arguments += 1;
        call.active += at < place;
    }
    call.arguments += end > open + 1;
}

// "[receiver part:1 other:|": the selector's first part comes behind the receiver.
std::optional<CallAround> MessageIn(const Tokens& tokens, size_t open, size_t place)
{
    const size_t receiver = open + 1;
    const bool isBracket = tokens[receiver].match != kNone && tokens[receiver].match > receiver;
    const size_t name = (isBracket ? tokens[receiver].match : receiver) + 1;
    if (!tokens[name].IsWord() || !tokens[name + 1].IsMark(":"))
        return std::nullopt;
    CallAround call{name, 0, 0, CallAround::Sort::Message};
    const size_t end = tokens[open].match == kNone ? tokens.Count() : tokens[open].match;
    for (size_t at = name; at < end; ++at) {
        const bool isPart = tokens[at].parent == open && tokens[at].IsMark(":") && tokens[at - 1].IsWord();
        call.arguments += isPart;
        call.active += isPart && at < place;
    }
    if (call.active == 0)
        return std::nullopt;
    --call.active;
    return call;
}

// Within "Name<int, |": angle brackets are no brackets to the tokens.
std::optional<CallAround> TemplateAround(const Tokens& tokens, size_t place, size_t open)
{
    const size_t begin = open == kNone ? 0 : open + 1;
    for (size_t at = place; at-- > begin;) {
        if (tokens[at].parent != open || tokens[at].IsMark(";"))
            return std::nullopt;
        if (!tokens[at].IsMark("<") || at == 0 || !tokens[at - 1].IsWord() || !tokens.Touch(at - 1, at))
            continue;
        const size_t end = tokens.AngleEnd(at);
        if (end != kNone && end < place)
            continue;
        CallAround call{at - 1, 0, 0, CallAround::Sort::Template};
        CountArguments(tokens, at, end == kNone ? place : end, place, call);
        return call;
    }
    return std::nullopt;
}

size_t BracketAround(const Tokens& tokens, size_t place, size_t offset)
{
    if (place > 0 && place <= tokens.Count()) {
        const resolve::Token& before = tokens[place - 1];
        const bool opens = before.IsMark("(") || before.IsMark("[") || before.IsMark("{");
        if (opens && before.End() <= offset)
            return place - 1;
        const bool closes = before.IsMark(")") || before.IsMark("]") || before.IsMark("}");
        return closes && before.match != kNone ? tokens[before.match].parent : before.parent;
    }
    return kNone;
}

} // namespace

std::optional<CallAround> FindCall(const Tokens& tokens, size_t offset)
{
    size_t place = tokens.FirstFrom(offset);
    if (place > 0 && tokens[place - 1].End() > offset)
        --place; // within a token
    size_t open = BracketAround(tokens, place, offset);
    for (bool isInnermost = true;; open = tokens[open].parent, isInnermost = false) {
        if (isInnermost)
            if (std::optional<CallAround> call = TemplateAround(tokens, place, open))
                return call;
        if (open == kNone)
            return std::nullopt;
        if (tokens[open].IsMark("{") && (open == 0 || IsBody(tokens, open)))
            return std::nullopt;
        if (tokens[open].IsMark("["))
            if (std::optional<CallAround> call = MessageIn(tokens, open, place))
                return call;
        const size_t name = tokens[open].IsMark("(") ? CalleeBefore(tokens, open) : kNone;
        if (name == kNone)
            continue;
        CallAround call{name, 0, 0, CallAround::Sort::Call};
        CountArguments(tokens, open, tokens[open].match == kNone ? place : tokens[open].match, place, call);
        return call;
    }
}

} // namespace wren
