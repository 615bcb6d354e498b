#include "wren/symbols/MeantPlaces.h"

#include <utility>

namespace wren {

namespace {

using tagging::SymbolKind;

bool IsTagDefinition(const resolve::Answer& answer)
{
    return answer.symbol.kind == SymbolKind::Struct || answer.symbol.kind == SymbolKind::Union ||
           answer.symbol.kind == SymbolKind::Enum;
}

bool NamesItsTag(const symbols::Symbol& symbol)
{
    if (symbol.kind != SymbolKind::Typedef)
        return false;
    for (const std::string_view word : {"struct ", "union ", "enum "})
        if (symbol.type.starts_with(word) && symbol.type.substr(word.size()) == symbol.name)
            return true;
    return false;
}

void KeepMeant(std::vector<resolve::Answer>& answers)
{
    std::erase_if(answers, [](const resolve::Answer& each) { return !each.isMeant; });
    if (answers.empty() || answers.front().how == resolve::How::Name)
        return;
    if (answers.front().IsFile()) {
        answers.erase(answers.begin() + 1, answers.end());
        return;
    }
    // A macro and an enumeration are "definitions" whatever is asked for.
    const bool wantsDefinitions = answers.front().symbol.isDefinition;
    std::erase_if(answers, [&](const resolve::Answer& each) { return each.symbol.isDefinition != wantsDefinitions; });
}

void FollowOwnTag(resolve::Answers& answers, const resolve::Resolver& resolver, const resolve::Place& place,
                  symbols::Limits limits)
{
    if (answers.found.empty() || !NamesItsTag(answers.found.front().symbol))
        return;
    resolve::Answers type = resolver.TypeDefinition(place, limits);
    if (!type.found.empty() && IsTagDefinition(type.found.front()))
        answers.found = std::move(type.found);
}

} // namespace

resolve::Answers MeantDefinition(const resolve::Resolver& resolver, const resolve::Place& place, symbols::Limits limits)
{
    resolve::Answers answers = resolver.Definition(place, limits);
    KeepMeant(answers.found);
    FollowOwnTag(answers, resolver, place, limits);
    return answers;
}

resolve::Answers MeantDeclaration(const resolve::Resolver& resolver, const resolve::Place& place,
                                  symbols::Limits limits)
{
    resolve::Answers answers = resolver.Declaration(place, limits);
    KeepMeant(answers.found);
    return answers;
}

} // namespace wren
