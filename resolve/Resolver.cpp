#include "resolve/Resolver.h"

#include "resolve/ParsedText.h"
#include "resolve/Question.h"

#include <algorithm>

namespace resolve {

namespace {

bool IsDefinition(const Symbol& symbol)
{
    return symbol.isDefinition;
}

struct Asked { // the declaration that the place itself is in the name of
    FileNumber file;
    unsigned line;
};

// The meanings of one thing: those that are wanted, or else the others. From a definition to its declaration, and
// back.
void Choose(const MeaningList& all, size_t begin, size_t end, bool wantsDefinition, const std::optional<Asked>& asked,
            bool isSystem, std::vector<const Meaning*>& chosen)
{
    const auto isAsked = [&](const Meaning& each) {
        return asked && each.symbol.file == asked->file && each.symbol.line == asked->line;
    };
    for (size_t i = begin; i < end; ++i)
        if (isAsked(all[i]) && IsDefinition(all[i].symbol) == wantsDefinition) {
            wantsDefinition = !wantsDefinition;
            break;
        }
    // A header of the system that is meant for users counts more than the inline function behind it.
    const Symbol& nearest = all[begin].symbol;
    const bool isSystemFunction = isSystem && IsCallable(nearest.kind) && nearest.scope.empty();
    if (isSystemFunction && !asked) {
        for (size_t i = begin; i < end; ++i)
            chosen.push_back(&all[i]);
        return;
    }
    const size_t before = chosen.size();
    for (const bool wanted : {wantsDefinition, !wantsDefinition}) {
        for (size_t i = begin; i < end; ++i)
            if (IsDefinition(all[i].symbol) == wanted && !isAsked(all[i]))
                chosen.push_back(&all[i]);
        if (chosen.size() > before)
            return;
    }
    for (size_t i = begin; i < end; ++i)
        chosen.push_back(&all[i]);
}

// How each thing was found: as the surest of its declarations.
std::vector<How> HowOfEntities(const MeaningList& meanings)
{
    std::vector<How> all;
    for (const Meaning& each : meanings) {
        if (each.entity >= all.size())
            all.resize(each.entity + 1, How::Name);
        all[each.entity] = std::min(all[each.entity], each.how);
    }
    return all;
}

bool IsTag(const Symbol& symbol)
{
    return symbol.kind == SymbolKind::Class || symbol.kind == SymbolKind::Struct || symbol.kind == SymbolKind::Union ||
           symbol.kind == SymbolKind::Enum;
}

// A tag and a function, or a variable, may have the same name and scope.
bool IsMeant(const Meaning& each, const Meaning& best, bool isFoundByName, World& world)
{
    if (isFoundByName || each.entity == best.entity)
        return true;
    return IsTag(each.symbol) == IsTag(best.symbol) && each.isUnlikely == best.isUnlikely &&
           world.VisibleScope(each.symbol) == world.VisibleScope(best.symbol);
}

} // namespace

ParsedTextPointer Resolver::TextOf(const Place& place) const
{
    if (texts != nullptr)
        return texts->Get(place.path, place.text, parser, place.language);
    return std::make_shared<const ParsedText>(place.path, place.text, parser, place.language);
}

KnownFiles* Resolver::Known() const
{
    return texts != nullptr ? &texts->Files() : nullptr;
}

Answers Resolver::AnswerTo(const Place& place, symbols::Limits limits, Wanted wanted) const
{
    Answers answers;
    answers.text = TextOf(place);
    Question question(snapshot, sources, answers.text, place.offset, limits, Known());
    const MeaningList meanings = question.Meanings();
    answers.name = question.Name();
    std::optional<Asked> asked;
    if (question.Self() != nullptr)
        asked = Asked{question.Self()->file, question.Self()->line};
    std::vector<const Meaning*> chosen;
    for (size_t begin = 0; begin < meanings.size();) {
        size_t end = begin + 1;
        while (end < meanings.size() && meanings[end].entity == meanings[begin].entity)
            ++end;
        if (wanted == Wanted::Either)
            for (size_t i = begin; i < end; ++i)
                chosen.push_back(&meanings[i]);
        else
            Choose(meanings, begin, end, wanted == Wanted::Definition, asked,
                   question.GetWorld().PathOf(meanings[begin].symbol.file).starts_with('/'), chosen);
        begin = end;
    }
    const std::vector<How> how = HowOfEntities(meanings);
    for (const Meaning* meaning : chosen) {
        if (answers.found.size() == limits.results) {
            answers.more = true;
            break;
        }
        Answer answer{meaning->symbol, std::string(question.GetWorld().PathOf(meaning->symbol.file)),
                      how[meaning->entity], meaning->reason, meaning->entity};
        answer.isMeant =
            IsMeant(*meaning, meanings.front(), how[meanings.front().entity] == How::Name, question.GetWorld());
        if (meaning->how == How::Local && question.Local())
            answer.offset = question.GetTokens()[question.Local()->name].offset;
        answers.found.push_back(std::move(answer));
    }
    return answers;
}

Answers Resolver::Definition(const Place& place, symbols::Limits limits) const
{
    return AnswerTo(place, limits, Wanted::Definition);
}

Answers Resolver::Declaration(const Place& place, symbols::Limits limits) const
{
    return AnswerTo(place, limits, Wanted::Declaration);
}

Answers Resolver::Meanings(const Place& place, symbols::Limits limits) const
{
    return AnswerTo(place, limits, Wanted::Either);
}

std::string Resolver::Explain(const Place& place) const
{
    Question question(snapshot, sources, TextOf(place), place.offset, {}, Known());
    const MeaningList meanings = question.Meanings();
    if (question.Name().empty())
        return "no name at the place: a comment, a string, or a blank\n";
    std::string text = "name: " + question.Name() + "\n" + question.GetWorld().Notes();
    size_t number = 0;
    for (const Meaning& meaning : meanings) {
        if (++number > 20) {
            text += "and " + std::to_string(meanings.size() - 20) + " more\n";
            break;
        }
        text += std::to_string(number) + ". " + std::string(question.GetWorld().PathOf(meaning.symbol.file)) + ":" +
                std::to_string(meaning.symbol.line) + " " + std::string(tagging::LongName(meaning.symbol.kind)) + " (" +
                std::string(NameOf(meaning.how)) + "): " + meaning.reason + "\n";
    }
    return text;
}

} // namespace resolve
