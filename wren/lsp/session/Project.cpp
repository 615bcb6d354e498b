#include "wren/lsp/session/Project.h"

#include <utility>

namespace wren::lsp {

Project::Project(symbols::WorkspaceOptions options, bool isIndexed, IndexListener listener)
    : root(options.root), isIndexed(isIndexed), listener(std::move(listener)), workspace(std::move(options))
{
}

Project::~Project()
{
    StopIndexing();
}

void Project::StartIndexing()
{
    if (thread.joinable())
        return;
    cancel.emplace();
    thread = std::thread([this] { Run(); });
}

void Project::StopIndexing()
{
    if (!thread.joinable())
        return;
    cancel->Cancel();
    thread.join();
}

bool Project::Update(symbols::Index& index, const std::string& what)
{
    const bool isFirst = index.Current() == nullptr;
    if (isFirst)
        listener.begin(what);
    symbols::Index::Listener steps;
    if (isFirst)
        steps.progress = [&](const symbols::Progress& progress) { listener.progress(what, progress); };
    const base::Result<symbols::UpdateResult> result = index.Update(steps, *cancel);
    const bool failed = !result && !cancel->IsCancelled();
    if (isFirst)
        listener.end(what, result ? std::to_string(result->parsed) + " files" : "ended before it was complete");
    if (failed)
        listener.warn(result.Failure().Message());
    else if (result && !result->warning.empty())
        listener.warn(result->warning);
    return static_cast<bool>(result);
}

void Project::Run()
{
    if (isIndexed && !Update(*workspace.Project(), root))
        return;
    if (workspace.System() != nullptr)
        Update(*workspace.System(), "/");
    if (!isIndexed || cancel->IsCancelled())
        return;
    const base::Result<void> watched = workspace.Project()->Watch(
        {}, [](const symbols::UpdateResult&) {}, *cancel);
    if (!watched && !cancel->IsCancelled())
        listener.warn(watched.Failure().Message());
}

void Project::TextChanged(const DocumentPointer& document)
{
    const std::lock_guard lock(mutex);
    unsettled[document->path] = document;
}

void Project::TextClosed(const std::string& path)
{
    const std::lock_guard lock(mutex);
    unsettled[path] = nullptr;
}

void Project::Settle(const std::string& except)
{
    const std::lock_guard one(settling);
    std::map<std::string, DocumentPointer> taken;
    {
        const std::lock_guard lock(mutex);
        const auto own = unsettled.find(except);
        const DocumentPointer kept = own == unsettled.end() ? nullptr : own->second;
        taken.swap(unsettled);
        if (taken.erase(except) > 0)
            unsettled[except] = kept;
    }
    for (const auto& [path, document] : taken) {
        if (document == nullptr)
            workspace.CloseText(path);
        else if (const base::Result<void> set = workspace.SetOpenText(path, document->text->Content()); !set)
            listener.warn(set.Failure().Message());
    }
}

} // namespace wren::lsp
