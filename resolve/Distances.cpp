#include "resolve/Distances.h"

#include <algorithm>

namespace resolve {

Distances::Distances(const symbols::Snapshot& snapshot, std::string_view path, std::vector<symbols::Include> includes,
                     KnownFiles& known)
    : snapshot(snapshot), path(path), includes(std::move(includes)), files(snapshot), shared(known)
{
}

const IncludeWalk& Distances::Walk()
{
    if (walk == nullptr)
        walk = shared.From(snapshot, path, includes);
    return *walk;
}

const symbols::File& Distances::FileOf(symbols::FileNumber file)
{
    const auto found = known.find(file);
    return found != known.end() ? found->second : known.emplace(file, snapshot.FileOf(file)).first->second;
}

bool Distances::IsHeader(symbols::FileNumber file)
{
    return IsHeaderPath(FileOf(file).path);
}

int Distances::Of(symbols::FileNumber file)
{
    const auto found = measured.find(file);
    if (found != measured.end())
        return found->second;
    const auto included = Walk().steps.find(file);
    const int distance = included != walk->steps.end() ? 2 * included->second : Measure(FileOf(file));
    return measured.emplace(file, distance).first->second;
}

int Distances::Measure(const symbols::File& file)
{
    if (file.path == path)
        return kOwn;
    if (file.isSystem != path.starts_with('/'))
        return kSystem;
    if (!IsHeaderPath(file.path)) {
        const auto header = Walk().stems.find(StemOf(file.path));
        if (header != walk->stems.end())
            return 2 * header->second + 1;
    }
    if (StemOf(file.path) == StemOf(path) && DirectoryOf(file.path) == DirectoryOf(path))
        return 3;
    if (DirectoryOf(file.path) == DirectoryOf(path))
        return kUnrelated;
    const int common = static_cast<int>(CommonDirectories(file.path, path));
    return kUnrelated + std::max(1, 100 - common);
}

} // namespace resolve
