#include "wren/desktop/symbols/PlaceQuestions.h"

#include "base/Identifier.h"
#include "wren/desktop/symbols/AskedSubject.h"
#include "wren/symbols/DeclarationRange.h"
#include "wren/symbols/MeantPlaces.h"
#include "wren/symbols/ShownNames.h"
#include "wren/symbols/SourceLines.h"
#include "wren/symbols/SourceText.h"
#include "wren/text/LineIndex.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace wren {

namespace {

constexpr size_t kMostPlaces = 1000;
constexpr size_t kMostUses = 20'000;

class Subject : public AskedSubject {
public:
    using AskedSubject::AskedSubject;

    FoundPlace PlaceOf(const resolve::Answer& answer)
    {
        FoundPlace place = In(answer.path);
        place.kind = answer.symbol.kind;
        if (answer.IsFile())
            return place;
        place.name = QualifiedName(answer.symbol);
        place.line = answer.symbol.line;
        const KeptSource* kept = SourceOf(answer.path);
        if (kept == nullptr)
            return place;
        const SourceText text = kept->Source();
        const DeclarationRange range = RangeOfDeclaration(answer.symbol, text, answer.offset);
        place.line = text.LineAt(range.nameStart);
        place.column = static_cast<long>(range.nameStart - text.LineStart(text.LineAt(range.nameStart))) + 1;
        ShowLine(place, text.Line(text.LineAt(range.nameStart)).substr(0, SourceLines::kMost),
                 range.nameEnd - range.nameStart);
        return place;
    }

    FoundPlace PlaceOf(const resolve::Use& use, std::string_view line, size_t nameSize) const
    {
        FoundPlace place = In(use.path);
        place.line = use.line;
        place.column = use.column;
        ShowLine(place, line, nameSize);
        return place;
    }

private:
    // Null when it cannot be read. Answers come by file, so the last one is kept.
    const KeptSource* SourceOf(const std::string& file)
    {
        if (source == nullptr || sourcePath != file) {
            const std::optional<std::string> text = TextOf(file);
            source = text ? std::make_unique<KeptSource>(*text) : nullptr;
            sourcePath = file;
        }
        return source.get();
    }

    FoundPlace In(const std::string& pathInIndex) const
    {
        FoundPlace place;
        place.path = AbsolutePath(pathInIndex);
        place.shown = pathInIndex;
        return place;
    }

    static void ShowLine(FoundPlace& place, std::string_view line, size_t nameSize)
    {
        const size_t start = std::min(line.find_first_not_of(" \t"), line.size());
        const size_t end = line.find_last_not_of(" \t\r\n") + 1;
        if (start >= end)
            return;
        place.source = line.substr(start, end - start);
        const size_t column = static_cast<size_t>(std::max(place.column, 1L)) - 1;
        place.nameStart = std::min(column - std::min(column, start), place.source.size());
        place.nameSize = std::min(nameSize, place.source.size() - place.nameStart);
    }

    std::string sourcePath;
    std::unique_ptr<KeptSource> source;
};

resolve::Answers AnswersTo(Wanted wanted, const Subject& subject)
{
    switch (wanted) {
    case Wanted::Declaration:
        return MeantDeclaration(subject.Resolver(), subject.Place(), subject.Limits(kMostPlaces));
    case Wanted::Implementations:
        return subject.Resolver().Implementations(subject.Place(), subject.Limits(kMostPlaces));
    default:
        return MeantDefinition(subject.Resolver(), subject.Place(), subject.Limits(kMostPlaces));
    }
}

// A definition that leads to its declaration is one that is known.
bool IsOnlyDeclared(const resolve::Answers& answers, const Subject& subject)
{
    const auto isDefinition = [](const resolve::Answer& each) {
        return each.IsFile() || each.symbol.isDefinition || each.how == resolve::How::Name;
    };
    if (answers.found.empty() || std::ranges::any_of(answers.found, isDefinition))
        return false;
    const resolve::Answers all = subject.Resolver().Meanings(subject.Place(), subject.Limits(kMostPlaces));
    return std::ranges::none_of(all.found,
                                [&](const resolve::Answer& each) { return each.isMeant && isDefinition(each); });
}

} // namespace

FoundPlaces PlacesOf(Wanted wanted, const AskedText& asked, const Question& question)
{
    Subject subject(asked, question);
    const resolve::Answers answers = AnswersTo(wanted, subject);
    FoundPlaces places;
    places.name = answers.name;
    places.more = answers.more;
    places.isSure = !answers.found.empty() && answers.found.front().how != resolve::How::Name;
    places.isOnlyDeclared = wanted == Wanted::Definition && IsOnlyDeclared(answers, subject);
    for (const resolve::Answer& answer : answers.found) {
        if (question.cancel.IsCancelled())
            break;
        if (answer.isMeant || wanted == Wanted::Implementations)
            places.found.push_back(subject.PlaceOf(answer));
    }
    return places;
}

bool ReferencesTo(const AskedText& asked, const Question& question,
                  const std::function<void(std::vector<FoundPlace> part)>& part)
{
    const Subject subject(asked, question);
    const auto sink = [&](std::string_view text, const std::vector<resolve::Use>& uses) {
        std::vector<FoundPlace> places;
        LineIndex lines;
        for (const resolve::Use& use : uses) {
            const long start = lines.LineStart(text, use.line - 1L);
            const long end = lines.LineStart(text, use.line);
            const std::string_view line = text.substr(static_cast<size_t>(start), static_cast<size_t>(end - start));
            const size_t size = base::IdentifierAround(line, use.column - 1).size();
            places.push_back(subject.PlaceOf(use, line.substr(0, SourceLines::kMost), size));
        }
        part(std::move(places));
        return !question.cancel.IsCancelled();
    };
    return subject.Resolver().ForEachUse(subject.Place(), subject.Limits(kMostUses),
                                         resolve::Resolver::Where::Everywhere, sink);
}

} // namespace wren
