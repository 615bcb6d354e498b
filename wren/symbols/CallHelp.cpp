#include "wren/symbols/CallHelp.h"

#include "wren/symbols/CallAround.h"
#include "wren/symbols/NamedSymbols.h"
#include "wren/symbols/ShownNames.h"
#include "wren/symbols/Signatures.h"

#include <algorithm>
#include <set>

namespace wren {

namespace {

using resolve::Tokens;
using tagging::Symbol;

constexpr size_t kMostOverloads = 50;
constexpr size_t kMostMembers = 1000;

// "(int a,int b) const" behind what the label has.
void AddSignature(std::string_view signature, CallHelp::Overload& overload)
{
    size_t done = 0;
    for (const std::string_view parameter : ParametersOf(signature)) {
        overload.label += done == 0 ? signature.substr(0, 1) : ", ";
        const size_t begin = overload.label.size();
        overload.label += WithBlanksBehindCommas(parameter);
        overload.parameters.emplace_back(begin, overload.label.size());
        overload.isVariadic = IsVariadic(parameter);
        done = static_cast<size_t>(parameter.data() - signature.data()) + parameter.size();
    }
    overload.label += WithBlanksBehindCommas(signature.substr(done));
}

CallHelp::Overload OverloadOf(const Symbol& symbol, CallAround::Sort sort)
{
    const bool isTemplate = sort == CallAround::Sort::Template;
    const std::string_view signature = isTemplate ? symbol.templateParameters : symbol.signature;
    CallHelp::Overload overload;
    if (!symbol.type.empty() && !isTemplate)
        overload.label = WithoutMadeNames(std::string(symbol.type)) + " ";
    overload.label += symbol.name;
    AddSignature(signature, overload);
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
    Overloads(const CallQuestion& question, const CallAround& call)
        : question(question), tokens(question.parsed.tokens), call(call)
    {
    }

    std::vector<CallHelp::Overload> All()
    {
        AddMeanings(call.name);
        return std::move(found);
    }

private:
    void AddMeanings(size_t token)
    {
        resolve::Place place = question.place;
        place.offset = tokens[token].offset;
        const resolve::Answers answers = question.resolver.Meanings(place, {kMostOverloads, question.cancel});
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
        for (const symbols::Symbol& each : question.snapshot.InScope(scope, {kMostMembers, question.cancel}).found)
            if (each.name == of.name && IsCallable(each.kind))
                Add(each);
    }

    void Add(const Symbol& symbol)
    {
        const std::string_view signature =
            call.sort == CallAround::Sort::Template ? symbol.templateParameters : symbol.signature;
        const bool isC = symbol.kind != tagging::SymbolKind::Macro && question.parsed.IsC();
        if (!signature.empty() && seen.insert(IdentityOf(symbol, isC)).second)
            found.push_back(OverloadOf(symbol, call.sort));
    }

    const CallQuestion& question;
    const Tokens& tokens;
    const CallAround& call;
    std::vector<CallHelp::Overload> found;
    std::set<std::string> seen;
};

// The first that takes as many arguments.
size_t ActiveOf(const std::vector<CallHelp::Overload>& overloads, const CallAround& call)
{
    const size_t wanted = std::max(call.arguments, call.active + (call.arguments > 0 ? 1 : 0));
    const auto fits = std::ranges::find_if(
        overloads, [&](const CallHelp::Overload& each) { return each.isVariadic || each.parameters.size() >= wanted; });
    return fits == overloads.end() ? 0 : static_cast<size_t>(fits - overloads.begin());
}

} // namespace

std::optional<CallHelp> CallHelpAt(const CallQuestion& question)
{
    const std::optional<CallAround> call = FindCall(question.parsed.tokens, question.place.offset);
    if (!call)
        return std::nullopt;
    CallHelp help;
    help.overloads = Overloads(question, *call).All();
    if (help.overloads.empty())
        return std::nullopt;
    help.active = ActiveOf(help.overloads, *call);
    const CallHelp::Overload& active = help.overloads[help.active];
    help.parameter = std::min(call->active, active.parameters.size() - (active.isVariadic ? 1 : 0));
    help.name = question.parsed.tokens[call->name].offset;
    return help;
}

} // namespace wren
