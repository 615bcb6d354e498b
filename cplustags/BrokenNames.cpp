#include "cplustags/BrokenNames.h"

#include "base/Descriptor.h"

#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

namespace cplustags {

namespace {

// Of remembered lines. Programs cannot open names a quarter as long, but "find" prints them.
constexpr size_t kMostBytes = 4 * PATH_MAX;

// Some file systems count characters instead of bytes.
constexpr size_t kLongestPart = 4 * NAME_MAX;

// With a trailing "/"; "" for the current directory.
std::string_view DirectoryPart(std::string_view name)
{
    return name.substr(0, name.rfind('/') + 1);
}

// The parent of a directory, in the form of DirectoryPart(); the directory itself if its name does not tell.
std::string_view Above(std::string_view directory)
{
    if (directory == "/" || directory == "../")
        return directory;
    return DirectoryPart(directory.substr(0, directory.size() - !directory.empty()));
}

bool HasLongPart(std::string_view name)
{
    size_t start = 0;
    for (size_t end; (end = name.find('/', start)) != std::string_view::npos; start = end + 1)
        if (end - start > kLongestPart)
            return true;
    return name.size() - start > kLongestPart;
}

// Not for reading. Also accepts a path longer than PATH_MAX: "find" prints such paths.
base::Descriptor OpenDirectory(std::string_view path)
{
    base::Descriptor directory;
    size_t done = 0;
    do {
        const size_t rest = path.size() - done;
        const size_t size = rest < PATH_MAX ? rest : path.substr(done, PATH_MAX - 1).rfind('/') + 1;
        const std::string piece(path.substr(done, size));
        if (size == 0)
            return base::Descriptor();
        for (done += size; done < path.size() && path[done] == '/';) // otherwise the rest would begin at the root
            ++done;
        const int at = directory.IsOpen() ? directory.Number() : AT_FDCWD;
        directory = base::Descriptor(::openat(at, piece.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    } while (directory.IsOpen() && done < path.size());
    return directory;
}

bool IsDirectory(std::string_view path)
{
    if (path.size() >= PATH_MAX)
        return OpenDirectory(path).IsOpen();
    struct stat status;
    return ::stat(std::string(path).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};

// Whether a file has that name, or a name that begins with it.
bool BeginsAName(std::string_view name)
{
    const std::string_view path = DirectoryPart(name);
    const std::string_view leaf = name.substr(path.size());
    const base::Descriptor directory = OpenDirectory(path.empty() ? "." : path);
    const int list = ::openat(directory.Number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::unique_ptr<DIR, CloseDirectory> entries(list < 0 ? nullptr : ::fdopendir(list));
    while (const dirent* entry = entries != nullptr ? ::readdir(entries.get()) : nullptr)
        if (std::string_view(entry->d_name).substr(0, leaf.size()) == leaf)
            return true;
    return false;
}

enum class Next { IsBetween, IsLast };

// Appends a line to the possible beginning of a name; false when no such name can exist. Intermediate lines that only
// continue a path component are not checked: the end of the component decides.
bool Append(std::string& name, const std::string& line, Next next)
{
    (name += '\n') += line;
    if (name.size() >= kMostBytes)
        return true; // undecidable, since such lines are cut
    if (HasLongPart(name))
        return false;
    if (line.find('/') != std::string::npos)
        return IsDirectory(DirectoryPart(name));
    return next == Next::IsBetween || BeginsAName(name);
}

} // namespace

std::optional<std::string> BrokenNames::NameWith(const std::string& line)
{
    if (IsKnownPlace(line) || line.find('\0') != std::string::npos)
        return std::nullopt;
    for (auto start = before.begin(); start != before.end(); ++start) {
        std::string name = start->text;
        for (auto between = start + 1; between != before.end() && start->mayBegin; ++between)
            start->mayBegin = Append(name, between->text, Next::IsBetween);
        start->mayBegin = start->mayBegin && Append(name, line, Next::IsLast);
        if (start->mayBegin)
            return name;
    }
    return std::nullopt;
}

void BrokenNames::Pass(const std::string& line)
{
    before.push_back({line});
    bytesBefore += line.size() + 1;
    for (; bytesBefore > kMostBytes && before.size() > 1; before.pop_front())
        bytesBefore -= before.front().text.size() + 1;
}

// A link to a directory is in a place but is not a place itself: "find" does not enter it.
void BrokenNames::Trust(const std::string& name)
{
    struct stat status;
    if (IsKnownPlace(name) || ::lstat(name.c_str(), &status) != 0)
        return;
    lastPlace = S_ISDIR(status.st_mode) ? name + "/" : std::string(DirectoryPart(name));
    places.insert(lastPlace);
}

bool BrokenNames::IsKnownPlace(const std::string& name)
{
    if (!lastPlace.empty() && name.compare(0, lastPlace.size(), lastPlace) == 0)
        return true;
    std::string_view place = DirectoryPart(name);
    while (places.count(std::string(place)) == 0) {
        const std::string_view above = Above(place);
        if (above.size() == place.size())
            return false;
        place = above;
    }
    lastPlace = place;
    return true;
}

} // namespace cplustags
