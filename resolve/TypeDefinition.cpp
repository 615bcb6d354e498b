// Where the type of what a name means is defined.
#include "resolve/ParsedText.h"
#include "resolve/Question.h"
#include "resolve/Resolver.h"

#include <algorithm>

namespace resolve {

namespace {

// Of a variable, a member, a function's result, a typedef's target. A type is its own.
Type TypeMeant(Question& question, const Meaning& meant)
{
    const Symbol& symbol = meant.symbol;
    if (question.Local() && meant.how == How::Local)
        return question.GetExpressions().TypeOfLocal(*question.Local());
    if (symbol.kind == SymbolKind::Enumerator)
        return ParseType(symbol.scope, "", symbol.file);
    if (IsTypeKind(symbol.kind))
        return ParseType(Joined(symbol.scope, symbol.name), "", symbol.file);
    return Substituted(ParseType(symbol.type, symbol.scope, symbol.file), meant.bindings);
}

} // namespace

Answers Resolver::TypeDefinition(const Place& place, symbols::Limits limits) const
{
    Answers answers;
    answers.text = TextOf(place);
    Question question(snapshot, sources, answers.text, place.offset, limits, Known());
    const MeaningList meanings = question.Meanings();
    answers.name = question.Name();
    if (meanings.empty())
        return answers;
    const Meaning& meant = meanings.front();
    const Type type = question.GetClasses().Canonical(TypeMeant(question, meant));
    if (!type.IsKnown())
        return answers;
    std::vector<Symbol> found = question.GetClasses().FindTypes(type.name, type.scope, type.file);
    const bool hasBody = std::any_of(found.begin(), found.end(), [](const Symbol& each) {
        return each.kind != SymbolKind::Typedef && IsTypeKind(each.kind);
    });
    for (const Symbol& symbol : found) {
        if (!IsTypeKind(symbol.kind) || (hasBody && symbol.kind == SymbolKind::Typedef))
            continue;
        // The first one decides the scope; others of its name and scope are alternatives to it.
        if (!answers.found.empty() && symbol.scope != answers.found.front().symbol.scope)
            break;
        if (answers.found.size() == limits.results) {
            answers.more = true;
            break;
        }
        Answer answer{symbol, std::string(question.GetWorld().PathOf(symbol.file)), meant.how,
                      "the type of '" + answers.name + "'"};
        answers.found.push_back(std::move(answer));
    }
    return answers;
}

} // namespace resolve
