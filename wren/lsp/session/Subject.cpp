#include "wren/lsp/session/Subject.h"

#include "base/PlainFile.h"
#include "resolve/ParsedText.h"

#include <optional>
#include <string_view>

namespace wren::lsp {

namespace {

std::shared_ptr<Project> SettledProject(const RequestContext& context, const std::string& path)
{
    std::shared_ptr<Project> project = context.projects.For(path);
    project->Prepare(path, context.cancel);
    project->Settle(path);
    return project;
}

} // namespace

void RequestContext::CheckCancelled() const
{
    if (cancel.IsCancelled())
        throw Failure(FailureCode::RequestCancelled, "the client has cancelled this");
}

Subject::Subject(const RequestContext& context, const std::string& given)
    : context(context), uri(given), absolute(PathOfDocument(given)), project(SettledProject(context, absolute)),
      path(project->Workspace().PathInIndex(absolute)), snapshot(project->Workspace().CurrentFor(path)),
      sources(project->Workspace()),
      resolver(*snapshot, sources, project->Workspace().Parser(), &project->ParsedTexts())
{
    if (const Document* const open = OpenAt(*context.documents, absolute)) {
        uri = open->uri;
        text = open->text;
        language = LanguageOf(open->languageId);
        isSource = language.has_value();
        return;
    }
    text = TextOf(path);
    if (text == nullptr)
        RefuseParameters(given + " is not open and cannot be read");
    uri = UriOf(path);
}

resolve::Place Subject::PlaceAt(Position position) const
{
    return {path, text->Content(), text->OffsetOf(position, Encoding()), language};
}

resolve::ParsedTextPointer Subject::Parsed() const
{
    return project->ParsedTexts().Get(path, text->Content(), project->Workspace().Parser(), language);
}

TextPointer Subject::TextOf(const std::string& pathInIndex) const
{
    TextPointer& kept = texts[pathInIndex];
    if (kept != nullptr)
        return kept;
    symbols::File file;
    file.path = pathInIndex;
    if (const Document* const open = OpenAt(*context.documents, project->Workspace().AbsolutePath(file)))
        return kept = open->text;
    if (std::optional<std::string> content = project->Workspace().Read(pathInIndex))
        kept = std::make_shared<const lsp::Text>(*std::move(content));
    return kept;
}

std::string Subject::UriOf(const std::string& pathInIndex) const
{
    symbols::File file;
    file.path = pathInIndex;
    return lsp::UriOf(*context.documents, project->Workspace().AbsolutePath(file));
}

} // namespace wren::lsp
