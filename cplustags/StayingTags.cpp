#include "cplustags/StayingTags.h"

#include "cplustags/Failure.h"
#include "tagsfile/OldTags.h"
#include "tagsfile/TagLine.h"

#include <cerrno>
#include <optional>
#include <sys/stat.h>

namespace cplustags {

namespace {

bool IsGone(const std::string& path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

} // namespace

StayingTags::StayingTags(const Place& place, std::unordered_set<std::string> tagged)
    : place(place), tagged(std::move(tagged))
{
}

bool StayingTags::Goes(std::string_view field)
{
    const std::string path = base::AbsolutePath(tagsfile::PathOfField(field, place.directory), place.directory);
    const std::optional<std::string> usual = tagsfile::FileField(path, place.directory);
    if ((usual && tagged.count(*usual) != 0) || IsGone(path))
        return true;
    ++files;
    return false;
}

tagsfile::TagsCount StayingTags::Count()
{
    tagsfile::LineSources old;
    old.push_back(Lines());
    const std::unique_ptr<tagsfile::LineSource> once = tagsfile::Merged(std::move(old));
    size_t tags = 0;
    for (std::string_view line; once->Next(line);)
        ++tags;
    return {files, tags};
}

std::unique_ptr<tagsfile::LineSource> StayingTags::Lines()
{
    files = 0;
    std::unique_ptr<tagsfile::LineSource> lines =
        tagsfile::LinesThatStay(place.target, [this](std::string_view field) { return Goes(field); });
    if (lines == nullptr)
        throw SystemFailure("cannot read " + base::Shown(place.target));
    return lines;
}

} // namespace cplustags
