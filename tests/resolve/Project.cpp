#include "tests/resolve/Project.h"

#include "tests/support/SnapshotOf.h"
#include "tests/support/SourcesInText.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

class ProjectSources : public resolve::Sources {
public:
    explicit ProjectSources(const std::map<std::string, std::string>& files) : files(files) {}

    std::optional<std::string> Read(const std::string& path) const override
    {
        const auto found = files.find(path);
        return found == files.end() ? std::nullopt : std::optional(found->second);
    }

private:
    const std::map<std::string, std::string>& files;
};

TextsParser& Texts()
{
    static TextsParser texts; // a process of ctags for all tests
    return texts;
}

} // namespace

Project::Project(const std::string& text)
{
    for (const auto& [path, marked] : SourcesInText(text))
        AddFile(path, marked);
    place.text = placeText;
    snapshot = Texts().Snapshot(files);
    sources = std::make_shared<ProjectSources>(files);
}

void Project::AddFile(const std::string& path, std::string text)
{
    const std::string_view mark = CaretSignIn(text);
    const size_t caret = text.find(mark);
    if (caret != std::string::npos)
        text.erase(caret, mark.size());
    size_t offset = caret;
    for (size_t at = text.find('$'); at != std::string::npos; at = text.find('$', at)) {
        const auto line = std::count(text.begin(), text.begin() + static_cast<long>(at), '\n') + 1;
        expected.push_back(path + ":" + std::to_string(line));
        text.erase(at, 1);
        if (offset != std::string::npos && offset > at)
            --offset;
    }
    files[path] = text;
    if (caret == std::string::npos)
        return;
    place.path = path;
    place.offset = offset;
    placeText = text;
}

resolve::Resolver Project::Resolver() const
{
    return {*snapshot, *sources, Texts().Parser()};
}

resolve::Answers Project::Definition() const
{
    return Resolver().Definition(place, {});
}
resolve::Answers Project::Declaration() const
{
    return Resolver().Declaration(place, {});
}
resolve::Answers Project::Meanings() const
{
    return Resolver().Meanings(place, {});
}
resolve::Candidates Project::Complete() const
{
    return Resolver().Complete(place, {});
}
std::string Project::Explain() const
{
    return Resolver().Explain(place);
}

std::vector<std::string> Lines(const resolve::Answers& answers)
{
    std::vector<std::string> lines;
    for (const resolve::Answer& answer : answers.found)
        lines.push_back(answer.path + ":" + std::to_string(answer.symbol.line) + " " + std::string(NameOf(answer.how)));
    return lines;
}

std::string First(const resolve::Answers& answers)
{
    if (answers.found.empty())
        return "";
    return answers.found.front().path + ":" + std::to_string(answers.found.front().symbol.line);
}

void ExpectDefinitions(const std::vector<ProjectCase>& cases)
{
    for (const ProjectCase& c : cases) {
        const Project project(c.text);
        const std::string expected = project.expected.empty() ? "" : project.expected.front();
        EXPECT_EQ(First(project.Definition()), expected) << c.why << "\n" << c.text << "\n" << project.Explain();
    }
}
