#include "cplustags/Sources.h"

#include "cplustags/Failure.h"
#include "tagsfile/TagLine.h"

#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace cplustags {

Sources::Sources(const Options& options, const Place& place, Progress& progress, std::function<bool()> goOn)
    : directory(place.directory), progress(progress),
      files(options.files, Open(options.list), place.currentDirectory, place.directory, progress, std::move(goOn))
{
}

// -1 for no list.
int Sources::Open(const std::string& path)
{
    if (path == Options::kStandard)
        return STDIN_FILENO;
    if (path.empty())
        return -1;
    list = base::Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!list.IsOpen())
        throw SystemFailure("cannot read the list " + base::Shown(path));
    return list.Number();
}

bool Sources::Next(FoundSource& source)
{
    while (files.Next(source.path)) {
        if (std::optional<std::string> field = tagsfile::FileField(source.path, directory)) {
            source.field = std::move(*field);
            return true;
        }
        progress.Say(base::Shown(source.path) +
                     " is left out: a tags file cannot hold a name with a tab or a line break in it");
        ++unnameable;
    }
    return false;
}

void Sources::CheckList() const
{
    if (!files.Error().empty())
        throw Failure("cannot read the list of sources: " + files.Error());
}

} // namespace cplustags
