#include "wren/lsp/features/SignatureHelp.h"

#include "resolve/ParsedText.h"
#include "wren/lsp/features/Signatures.h"
#include "wren/lsp/features/TextPlace.h"
#include "wren/lsp/session/Subject.h"
#include "wren/symbols/NamedSymbols.h"
#include "wren/symbols/ShownNames.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace wren::lsp {

namespace {

using resolve::kNone;
using resolve::Tokens;
using tagging::Symbol;

constexpr size_t kMostOverloads = 50;

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

namespace {

struct Overload {
    std::string label;
    std::vector<std::pair<size_t, size_t>> parameters; // offsets in the label, bytes
    bool isVariadic = false;
};

Overload OverloadOf(const Symbol& symbol, CallAround::Sort sort)
{
    const bool isTemplate = sort == CallAround::Sort::Template;
    const std::string_view signature = isTemplate ? symbol.templateParameters : symbol.signature;
    Overload overload;
    if (!symbol.type.empty() && !isTemplate)
        overload.label = WithoutMadeNames(std::string(symbol.type)) + " ";
    overload.label += symbol.name;
    const size_t start = overload.label.size();
    overload.label += signature;
    for (const std::string_view parameter : ParametersOf(signature)) {
        const size_t begin = start + static_cast<size_t>(parameter.data() - signature.data());
        overload.parameters.emplace_back(begin, begin + parameter.size());
        overload.isVariadic = IsVariadic(parameter);
    }
    return overload;
}

// The same for declarations and definitions of one function.
std::string IdentityOf(const Symbol& symbol, bool isC)
{
    std::string identity;
    if (!isC)
        for (const std::string_view parameter : ParametersOf(symbol.signature))
            identity += TypeOfParameter(parameter) + ",";
    return identity;
}

class Overloads {
public:
    Overloads(const Subject& subject, const Tokens& tokens, const CallAround& call)
        : subject(subject), tokens(tokens), call(call)
    {
    }

    std::vector<Overload> All()
    {
        AddMeanings(call.name);
        return std::move(found);
    }

private:
    void AddMeanings(size_t token)
    {
        const resolve::Place place{subject.Path(), subject.Text().Content(), tokens[token].offset};
        const resolve::Answers answers = subject.Resolver().Meanings(place, subject.LimitsOf(kMostOverloads));
        for (const resolve::Answer& answer : answers.found)
            Take(answer.symbol, token);
    }

    void Take(const Symbol& symbol, size_t token)
    {
        if (call.sort == CallAround::Sort::Template ? !symbol.templateParameters.empty() : IsCallable(symbol.kind))
            return Add(symbol);
        if (IsClass(symbol.kind))
            return AddConstructors(symbol);
        const bool isDeclared =
            symbol.kind == tagging::SymbolKind::Local && token > 0 && tokens[token - 1].IsWord() && token == call.name;
        if (isDeclared && tokens[token].line == symbol.line) // "Shape s(|"
            AddMeanings(token - 1);
    }

    void AddConstructors(const Symbol& of)
    {
        const std::string scope =
            of.scope.empty() ? std::string(of.name) : std::string(of.scope) + "::" + std::string(of.name);
        for (const symbols::Symbol& each : subject.Snapshot().InScope(scope, subject.LimitsOf(1000)).found)
            if (each.name == of.name && IsCallable(each.kind))
                Add(each);
    }

    void Add(const Symbol& symbol)
    {
        const std::string_view signature =
            call.sort == CallAround::Sort::Template ? symbol.templateParameters : symbol.signature;
        const bool isC = symbol.kind != tagging::SymbolKind::Macro && subject.Parsed()->IsC();
        if (!signature.empty() && seen.insert(IdentityOf(symbol, isC)).second)
            found.push_back(OverloadOf(symbol, call.sort));
    }

    const Subject& subject;
    const Tokens& tokens;
    const CallAround& call;
    std::vector<Overload> found;
    std::set<std::string> seen;
};

unsigned Units(const std::string& label, size_t offset)
{
    return Text(label).PositionOf(offset, Encoding::Utf16).character;
}

Json JsonOf(const Overload& overload, bool withOffsets)
{
    Json parameters = Json::array();
    for (const auto& [begin, end] : overload.parameters)
        if (withOffsets)
            parameters.push_back({{"label", {Units(overload.label, begin), Units(overload.label, end)}}});
        else
            parameters.push_back({{"label", overload.label.substr(begin, end - begin)}});
    return {{"label", overload.label}, {"parameters", parameters}};
}

// The first that takes as many arguments.
size_t ActiveOf(const std::vector<Overload>& overloads, const CallAround& call)
{
    const size_t wanted = std::max(call.arguments, call.active + (call.arguments > 0 ? 1 : 0));
    const auto fits = std::ranges::find_if(
        overloads, [&](const Overload& each) { return each.isVariadic || each.parameters.size() >= wanted; });
    return fits == overloads.end() ? 0 : static_cast<size_t>(fits - overloads.begin());
}

} // namespace

Json SignatureHelp(const TextDocumentPositionParams& params, const RequestContext& context)
{
    const Subject subject(context, params.uri);
    if (!subject.IsSource())
        return nullptr;
    const size_t offset = subject.Text().OffsetOf(params.position, subject.Encoding());
    const resolve::ParsedTextPointer parsed = subject.Parsed();
    if (PlaceIn(subject.Text().Content(), parsed->tokens, offset).sort == TextPlace::Sort::Include)
        return nullptr;
    const std::optional<CallAround> call = FindCall(parsed->tokens, offset);
    if (!call)
        return nullptr;
    const std::vector<Overload> overloads = Overloads(subject, parsed->tokens, *call).All();
    if (overloads.empty())
        return nullptr;
    const bool withOffsets =
        context.client.Can("textDocument/signatureHelp/signatureInformation/parameterInformation/labelOffsetSupport");
    Json signatures = Json::array();
    for (const Overload& each : overloads)
        signatures.push_back(JsonOf(each, withOffsets));
    const size_t active = ActiveOf(overloads, *call);
    const size_t count = overloads[active].parameters.size();
    const size_t last = overloads[active].isVariadic ? count - 1 : count;
    return {{"signatures", signatures}, {"activeSignature", active}, {"activeParameter", std::min(call->active, last)}};
}

} // namespace wren::lsp
