#include "symbols/update/Changes.h"

#include "symbols/update/ReadSmallFile.h"
#include "symbols/update/SourceNames.h"
#include "symbols/update/Stamps.h"

#include <optional>
#include <string_view>

namespace symbols {

namespace {

constexpr size_t kMostToCompare = size_t(64) << 20; // bytes; larger files are parsed
constexpr size_t kMostOfHeader = size_t(8) << 20;

// The beginning of such a header: a licence and then the first directive.
constexpr size_t kBeginning = 8192;

bool IsHeader(const std::string& path)
{
    const std::optional<std::string> text = ReadSmallFile(path, Links::Follow, kMostOfHeader);
    return text && LooksLikeHeader(std::string_view(*text).substr(0, kBeginning));
}

bool HasSameContent(const File& before, const FoundFile& found, const std::string& path)
{
    if (before.stamp.size != found.stamp.size || found.stamp.size > kMostToCompare)
        return false;
    const std::optional<std::string> text = ReadSmallFile(path, Links::Follow, kMostToCompare);
    return text && tagging::ContentHash(*text) == before.contentHash;
}

void AddKnown(Changes& changes, const File& before, const FoundFile& found, const std::string& root)
{
    if (before.stamp == found.stamp)
        return;
    const std::string path = root + "/" + found.path;
    if (!HasSameContent(before, found, path))
        (found.needsLook && !IsHeader(path) ? changes.remove : changes.parse).push_back(found.path);
    else if (const tagging::FileStamp stamp = StampToKeep(found.stamp); stamp != before.stamp)
        changes.touch.emplace_back(found.path, stamp);
}

void AddNew(Changes& changes, const FoundFile& found, const std::string& root)
{
    if (!found.needsLook || IsHeader(root + "/" + found.path))
        changes.parse.push_back(found.path);
}

} // namespace

Changes ChangesOfTree(const Snapshot* before, const std::vector<FoundFile>& found, const std::string& root,
                      const base::CancelToken& cancel)
{
    Changes changes;
    auto next = found.begin();
    if (before != nullptr)
        before->ForEachFile([&](FileNumber, const File& file) { // both are in the order of paths
            for (; next != found.end() && next->path < file.path; ++next)
                AddNew(changes, *next, root);
            if (next != found.end() && next->path == file.path)
                AddKnown(changes, file, *next++, root);
            else
                changes.remove.emplace_back(file.path);
            return !cancel.IsCancelled();
        });
    for (; next != found.end() && !cancel.IsCancelled(); ++next)
        AddNew(changes, *next, root);
    return changes;
}

void AddChangesOfFile(Changes& changes, const Snapshot& before, const std::string& path,
                      const std::optional<FoundFile>& found, const std::string& root)
{
    const std::optional<FileNumber> number = before.FindFile(path);
    if (number && found)
        AddKnown(changes, before.FileOf(*number), *found, root);
    else if (number)
        changes.remove.push_back(path);
    else if (found)
        AddNew(changes, *found, root);
}

} // namespace symbols
