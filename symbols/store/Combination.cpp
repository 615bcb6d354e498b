#include "symbols/store/Combination.h"

#include <algorithm>

namespace symbols {

namespace {

// The path in a system's segment; nullopt for one that lies elsewhere.
std::optional<std::string_view> PathInPart(const Part& part, std::string_view path)
{
    if (part.system == nullptr)
        return path;
    const std::string_view prefix = part.system->Prefix();
    return path.starts_with(prefix) ? std::optional(path.substr(prefix.size())) : std::nullopt;
}

std::optional<FileInSegment> FileIn(const Part& part, std::string_view path)
{
    const std::optional<std::string_view> inPart = PathInPart(part, path);
    return inPart ? part.segment->FindFile(*inPart) : std::nullopt;
}

void AddSorted(std::vector<FileInSegment>& files, FileInSegment file)
{
    files.insert(std::ranges::upper_bound(files, file), file);
}

} // namespace

Combination::Combination(Layers given) : layers(std::move(given))
{
    AddIndex(layers.project, nullptr);
    AddIndex(layers.system, &layers.systemRoot);
    AddRead(layers.read, false);
    AddRead(layers.readOfSystem, true);
    if (const auto* const tags = dynamic_cast<const View*>(layers.tags.get()); tags != nullptr)
        for (Part part : tags->Parts()) {
            part.isFromTags = true;
            parts.push_back(std::move(part));
        }
    covered.resize(parts.size());
}

void Combination::AddIndex(const SnapshotPointer& snapshot, const std::string* systemRoot)
{
    const auto* const view = dynamic_cast<const View*>(snapshot.get());
    if (view == nullptr)
        return;
    otherBytes += view->OtherBytes();
    std::vector<std::shared_ptr<const SystemPaths>> paths;
    if (systemRoot != nullptr)
        paths = view->PathsUnder(*systemRoot);
    for (size_t i = 0; i < view->Parts().size(); i++) {
        Part part = view->Parts()[i];
        part.isSystem = systemRoot != nullptr;
        part.system = systemRoot != nullptr ? paths[i] : nullptr;
        parts.push_back(std::move(part));
    }
    covered.resize(parts.size());
}

void Combination::AddRead(const SnapshotPointer& snapshot, bool isSystem)
{
    const auto* const view = dynamic_cast<const View*>(snapshot.get());
    if (view == nullptr)
        return;
    const size_t indexed = parts.size();
    for (Part part : view->Parts()) {
        part.isSystem = isSystem;
        part.prefix = isSystem ? layers.systemRoot.size() : 0;
        for (FileInSegment file = 0; file < part.segment->FileCount(); file++) {
            const std::string_view path = part.segment->PathOf(file).value_or("");
            const bool isKnown =
                std::any_of(parts.begin(), parts.begin() + std::ptrdiff_t(indexed), [&](const Part& p) {
                    const std::optional<FileInSegment> known = FileIn(p, path);
                    return known && p.IsLive(*known);
                });
            if (isKnown && part.IsLive(file))
                part.hidden.push_back(file);
        }
        covered.push_back(part.hidden);
        parts.push_back(std::move(part));
    }
}

// The open text is of the same sort as the file that it hides.
void Combination::Hide(const std::string& path, Part* open)
{
    for (size_t i = 0; i < covered.size(); i++) {
        Part& part = parts[i];
        const std::optional<FileInSegment> file = part.isFromTags ? std::nullopt : FileIn(part, path);
        if (!file || !part.IsLive(*file))
            continue;
        AddSorted(part.hidden, *file);
        open->isSystem = part.isSystem;
        open->prefix = part.system == nullptr ? part.prefix : part.system->Prefix().size();
    }
}

void Combination::Show(const std::string& path)
{
    for (size_t i = 0; i < covered.size(); i++) {
        Part& part = parts[i];
        const std::optional<FileInSegment> file = FileIn(part, path);
        if (file && !std::ranges::binary_search(covered[i], *file))
            std::erase(part.hidden, *file);
    }
}

void Combination::Put(const std::shared_ptr<const OpenText>& text)
{
    const auto [place, isNew] = places.try_emplace(text->Path(), parts.size());
    if (isNew) {
        Part part{.segment = text->Symbols(), .open = text};
        Hide(text->Path(), &part);
        parts.push_back(std::move(part));
        return;
    }
    Part& part = parts[place->second];
    part.segment = text->Symbols();
    part.open = text;
}

void Combination::Remove(const std::string& path)
{
    const auto place = places.find(path);
    if (place == places.end())
        return;
    const size_t gap = place->second;
    places.erase(place);
    if (gap + 1 != parts.size()) {
        parts[gap] = std::move(parts.back());
        places[parts[gap].open->Path()] = gap;
    }
    parts.pop_back();
    Show(path);
}

SnapshotPointer Combination::Current() const
{
    return std::make_shared<View>(parts, otherBytes);
}

} // namespace symbols
