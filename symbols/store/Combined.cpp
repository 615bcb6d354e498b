// Several indexes and the open texts as one.

#include "symbols/store/SegmentBuilder.h"
#include "symbols/store/View.h"

#include <algorithm>

namespace symbols {

OpenText::OpenText(std::string path, std::string text, const tagging::ParsedSource& parsed)
    : path(std::move(path)), text(std::move(text))
{
    SegmentBuilder builder;
    builder.Add(this->path, {this->text.size(), 0, 0}, parsed);
    SegmentSink sink(-1);
    [[maybe_unused]] const auto written = builder.Write(sink); // memory does not fail
    symbols = Segment::InMemory(sink.Content());
}

namespace {

void AddParts(const SnapshotPointer& snapshot, const std::string* systemRoot, std::vector<Part>* parts)
{
    const auto* const view = dynamic_cast<const View*>(snapshot.get());
    if (view == nullptr)
        return;
    std::vector<std::shared_ptr<const SystemPaths>> paths;
    if (systemRoot != nullptr)
        paths = view->PathsUnder(*systemRoot);
    for (size_t i = 0; i < view->Parts().size(); i++) {
        Part part = view->Parts()[i];
        part.isSystem = systemRoot != nullptr;
        part.system = systemRoot != nullptr ? paths[i] : nullptr;
        parts->push_back(std::move(part));
    }
}

// The path in a system's segment; nullopt for one that lies elsewhere.
std::optional<std::string_view> PathInPart(const Part& part, std::string_view path)
{
    if (part.system == nullptr)
        return path;
    const std::string_view prefix = part.system->Prefix();
    return path.starts_with(prefix) ? std::optional(path.substr(prefix.size())) : std::nullopt;
}

// The open text's part, of the same sort as the file that it hides.
Part PartOf(const std::shared_ptr<const OpenText>& text, std::vector<Part>* parts)
{
    Part made{.segment = text->Symbols(), .open = text};
    for (Part& part : *parts) {
        const std::optional<std::string_view> path = PathInPart(part, text->Path());
        const std::optional<FileInSegment> file = path ? part.segment->FindFile(*path) : std::nullopt;
        if (!file || !part.IsLive(*file))
            continue;
        part.hidden.insert(std::ranges::upper_bound(part.hidden, *file), *file);
        made.isSystem = part.isSystem;
        made.prefix = part.system == nullptr ? 0 : part.system->Prefix().size();
    }
    return made;
}

} // namespace

SnapshotPointer Combined(SnapshotPointer project, SnapshotPointer system, const std::string& systemRoot,
                         const std::vector<std::shared_ptr<const OpenText>>& open)
{
    std::vector<Part> parts;
    AddParts(project, nullptr, &parts);
    AddParts(system, &systemRoot, &parts);
    for (const std::shared_ptr<const OpenText>& text : open) {
        Part part = PartOf(text, &parts);
        parts.push_back(std::move(part));
    }
    std::uint64_t otherBytes = 0;
    for (const SnapshotPointer& snapshot : {project, system})
        if (const auto* const view = dynamic_cast<const View*>(snapshot.get()); view != nullptr)
            otherBytes += view->OtherBytes();
    return std::make_shared<View>(std::move(parts), otherBytes);
}

} // namespace symbols
