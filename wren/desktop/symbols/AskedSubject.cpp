#include "wren/desktop/symbols/AskedSubject.h"

namespace wren {

AskedSubject::AskedSubject(const AskedText& asked, const Question& question)
    : asked(asked), question(question), project(Settled(asked, question)), workspace(project->Workspace()),
      path(workspace.PathInIndex(asked.path)), snapshot(workspace.CurrentFor(path)), sources(workspace),
      resolver(*snapshot, sources, workspace.Parser(), &project->ParsedTexts())
{
}

std::shared_ptr<Project> AskedSubject::Settled(const AskedText& asked, const Question& question)
{
    std::shared_ptr<Project> project = question.projects.For(asked.path);
    project->Prepare(asked.path, question.cancel);
    project->Settle(asked.path);
    return project;
}

resolve::ParsedTextPointer AskedSubject::Parsed() const
{
    return project->ParsedTexts().Get(path, *asked.text, workspace.Parser());
}

std::optional<std::string> AskedSubject::TextOf(const std::string& pathInIndex) const
{
    return pathInIndex == path ? *asked.text : workspace.Read(pathInIndex);
}

std::string AskedSubject::AbsolutePath(const std::string& pathInIndex) const
{
    symbols::File file;
    file.path = pathInIndex;
    return workspace.AbsolutePath(file);
}

} // namespace wren
