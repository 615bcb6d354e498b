#include "wren/desktop/symbols/PlaceQuestions.h"

#include "base/Identifier.h"
#include "resolve/Resolver.h"
#include "wren/symbols/NameColumn.h"
#include "wren/symbols/ShownNames.h"
#include "wren/symbols/SourceLines.h"
#include "wren/symbols/WorkspaceSources.h"

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
        if (IsFile(answer))
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

    static bool IsFile(const resolve::Answer& answer)
    {
        return answer.symbol.kind == tagging::SymbolKind::None && answer.symbol.name.empty();
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
        const size_t end = line.find_last_not_of(" \t\r") + 1;
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

std::string_view LineAround(std::string_view text, size_t offset)
{
    const size_t start = offset == 0 ? 0 : text.rfind('\n', offset - 1) + 1; // 0 behind npos
    const size_t end = std::min(text.find('\n', offset), text.size());
    return text.substr(start, std::min(end - start, SourceLines::kMost));
}

// Offsets of lines that are asked for in their order.
class LineOffsets {
public:
    explicit LineOffsets(std::string_view text) : text(text) {}

    size_t Of(unsigned wanted)
    {
        for (; line < wanted; ++line) {
            const size_t end = text.find('\n', start);
            if (end == std::string_view::npos)
                return start;
            start = end + 1;
        }
        return start;
    }

private:
    const std::string_view text;
    unsigned line = 1;
    size_t start = 0;
};

size_t WordSize(std::string_view text, size_t offset)
{
    size_t end = std::min(offset, text.size());
    while (end < text.size() && base::IsIdentifierCharacter(text[end]))
        ++end;
    return end - std::min(offset, end);
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

FoundPlaces ReferencesTo(const AskedText& asked, const Question& question,
                         const std::function<void(std::vector<FoundPlace> part)>& part)
{
    const Subject subject(asked, question);
    FoundPlaces all;
    const auto sink = [&](std::string_view text, const std::vector<resolve::Use>& uses) {
        std::vector<FoundPlace> places;
        LineOffsets offsets(text);
        for (const resolve::Use& use : uses) {
            const size_t start = offsets.Of(use.line);
            const size_t size = WordSize(text, start + use.column - 1);
            if (all.name.empty())
                all.name = text.substr(std::min(start + use.column - 1, text.size()), size);
            places.push_back(subject.PlaceOf(use, LineAround(text, start), size));
        }
        part(std::move(places));
        return !question.cancel.IsCancelled();
    };
    all.more = subject.Resolver().ForEachUse(subject.Place(), subject.Limits(kMostUses),
                                             resolve::Resolver::Where::Everywhere, sink);
    return all;
}

} // namespace wren
