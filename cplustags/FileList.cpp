#include "cplustags/FileList.h"

#include "base/Paths.h"
#include "cplustags/Progress.h"
#include "cplustags/SparseFile.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace cplustags {

namespace {

constexpr size_t kMostLinesOfName = 16;

bool IsRegular(const std::string& name)
{
    struct stat status;
    return ::stat(name.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool Exists(const std::string& name)
{
    struct stat status;
    return ::lstat(name.c_str(), &status) == 0;
}

// The list has other line ends than '\n'. The system would cut the name at the zero.
bool HasZero(const std::string& name)
{
    return name.find('\0') != std::string::npos;
}

} // namespace

FileList::FileList(std::vector<std::string> files, int list, std::string directory, std::string tree,
                   Progress& progress, std::function<bool()> goOn)
    : files(std::make_move_iterator(files.begin()), std::make_move_iterator(files.end())), lines(list, std::move(goOn)),
      directory(std::move(directory)), tree(std::move(tree)), progress(progress)
{
}

bool FileList::Next(std::string& path)
{
    std::string name;
    while (NextName(name)) {
        hasNames = true;
        if (!IsToBeTagged(name))
            continue;
        path = base::AbsolutePath(name, directory);
        if (seen.insert(path).second)
            return true;
    }
    return false;
}

bool FileList::NextName(std::string& name)
{
    if (!files.empty()) {
        name = std::move(files.front());
        files.pop_front();
        return true;
    }
    while (lines.Has(0) && lines.At(0).empty())
        Pass(1);
    if (!lines.Has(0))
        return false;
    Pass(LinesOfName(name));
    return true;
}

void FileList::Pass(size_t count)
{
    for (size_t line = 0; line < count; ++line)
        brokenNames.Pass(lines.At(line));
    lines.Drop(count);
}

bool FileList::BeginsTree(const std::string& name) const
{
    return tree.size() > name.size() && tree[name.size()] == '\n' && tree.compare(0, name.size(), name) == 0;
}

size_t FileList::LinesOfName(std::string& name)
{
    const std::optional<std::string> whole = brokenNames.NameWith(lines.At(0));
    name = whole.value_or(lines.At(0));
    const size_t count = LinesThatComplete(name);
    if (!whole && !BeginsTree(name))
        brokenNames.Trust(name);
    return count;
}

// Returns 1, for the line that ends 'name', unless that is no file and adding lines gives a file or another existing
// name. A directory does not end the search: its name may be the beginning of another name.
size_t FileList::LinesThatComplete(std::string& name)
{
    if (IsRegular(name) && !BeginsTree(name))
        return 1;
    size_t lineCount = 1;
    std::string longer = name;
    for (size_t count = 2; count <= kMostLinesOfName && lines.Has(count - 1); ++count) {
        longer.append("\n").append(lines.At(count - 1));
        if (longer.size() >= PATH_MAX)
            break;
        if (!Exists(longer) || (lineCount > 1 && !IsRegular(longer)))
            continue;
        name = longer;
        lineCount = count;
        if (IsRegular(longer))
            break;
    }
    return lineCount;
}

bool FileList::IsToBeTagged(const std::string& name)
{
    struct stat status;
    if (HasZero(name))
        errno = ENOENT;
    else if (::stat(name.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode))
            return false;
        if (IsMostlyHoles(status)) {
            Report(name, EFBIG);
            return false;
        }
        if (::faccessat(AT_FDCWD, name.c_str(), R_OK, AT_EACCESS) == 0)
            return true;
    }
    Report(name, errno);
    return false;
}

void FileList::Report(const std::string& name, int reason)
{
    ++(reason == ENOENT || reason == ENOTDIR ? missing : unreadable);
    progress.Say("cannot read " + base::Shown(name) + ": " + std::strerror(reason));
}

} // namespace cplustags
