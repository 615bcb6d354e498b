#include "wren/desktop/symbols/PlaceQuestions.h"

#include "base/Identifier.h"
#include "resolve/Resolver.h"
#include "wren/symbols/NameColumn.h"
#include "wren/symbols/ShownNames.h"
#include "wren/symbols/SourceLines.h"
#include "wren/symbols/WorkspaceSources.h"
#include "wren/text/LineIndex.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace wren {

namespace {

constexpr size_t kMostPlaces = 1000;
constexpr size_t kMostUses = 20'000;

// A text, with all that answers questions about it.
class Subject {
public:
    Subject(const AskedText& asked, const Question& question)
        : asked(asked), question(question), project(Settled(asked, question)), workspace(project->Workspace()),
          path(workspace.PathInIndex(asked.path)), snapshot(workspace.CurrentFor(path)), sources(workspace),
          resolver(*snapshot, sources, workspace.Parser(), &project->ParsedTexts()),
          lines([this](const std::string& file) { return TextOf(file); })
    {
    }

    const resolve::Resolver& Resolver() const { return resolver; }
    resolve::Place Place() const { return {path, *asked.text, asked.offset}; }
    symbols::Limits Limits(size_t results) const { return {results, &question.cancel}; }

    FoundPlace PlaceOf(const resolve::Answer& answer)
    {
        FoundPlace place = In(answer.path);
        place.kind = answer.symbol.kind;
        if (answer.IsFile())
            return place;
        place.name = QualifiedName(answer.symbol);
        place.line = answer.symbol.line;
        const std::string_view line = lines.Line(answer.path, answer.symbol.line);
        const std::string_view word = answer.symbol.name.substr(0, answer.symbol.name.find(':'));
        place.column = NameColumn(line, word);
        ShowLine(place, line, word.size());
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
    static std::shared_ptr<Project> Settled(const AskedText& asked, const Question& question)
    {
        std::shared_ptr<Project> project = question.projects.For(asked.path);
        project->Prepare(asked.path, question.cancel);
        project->Settle(asked.path);
        return project;
    }

    std::optional<std::string> TextOf(const std::string& file) const
    {
        return file == path ? *asked.text : workspace.Read(file);
    }

    FoundPlace In(const std::string& pathInIndex) const
    {
        symbols::File file;
        file.path = pathInIndex;
        FoundPlace place;
        place.path = workspace.AbsolutePath(file);
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

    const AskedText& asked;
    const Question& question;
    const std::shared_ptr<Project> project;
    symbols::Workspace& workspace;
    const std::string path; // as in the index
    const symbols::SnapshotPointer snapshot;
    const WorkspaceSources sources;
    const resolve::Resolver resolver;
    SourceLines lines;
};

resolve::Answers AnswersTo(Wanted wanted, const Subject& subject)
{
    switch (wanted) {
    case Wanted::Declaration:
        return subject.Resolver().Declaration(subject.Place(), subject.Limits(kMostPlaces));
    case Wanted::Implementations:
        return subject.Resolver().Implementations(subject.Place(), subject.Limits(kMostPlaces));
    default:
        return subject.Resolver().Definition(subject.Place(), subject.Limits(kMostPlaces));
    }
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
