#include "symbols/update/GitTree.h"

#include "base/Paths.h"
#include "base/UserDirectories.h"
#include "symbols/update/ReadSmallFile.h"

#include <algorithm>
#include <cctype>
#include <sys/stat.h>

namespace symbols {

namespace {

bool IsPlainFile(const std::string& path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool IsDirectory(const std::string& path)
{
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string_view Trimmed(std::string_view text)
{
    const size_t start = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    text.remove_prefix(start);
    return text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
}

// The path in a file like a work tree's ".git" or "commondir".
std::optional<std::string> PathIn(const std::string& file, std::string_view before, const std::string& directory)
{
    const std::optional<std::string> text = ReadSmallFile(file, Links::Follow);
    if (!text || !text->starts_with(before))
        return std::nullopt;
    const std::string_view path = Trimmed(std::string_view(*text).substr(before.size()));
    if (path.empty() || path.find('\0') != std::string_view::npos)
        return std::nullopt;
    return base::AbsolutePath(path, directory);
}

std::optional<std::string> GitDirectory(const std::string& top)
{
    std::string path = top + "/.git";
    if (IsPlainFile(path)) {
        const std::optional<std::string> elsewhere = PathIn(path, "gitdir:", top);
        if (!elsewhere)
            return std::nullopt;
        path = *elsewhere;
    }
    struct stat status;
    // HEAD may be a link to a branch that does not exist yet.
    if (!IsDirectory(path) || ::lstat((path + "/HEAD").c_str(), &status) != 0)
        return std::nullopt;
    return path;
}

std::string Lower(std::string_view text)
{
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

// The last value of a setting in a configuration file of git's. Values with escapes or quotes inside are not read.
std::optional<std::string> Setting(const std::string& file, std::string_view section, std::string_view name)
{
    const std::optional<std::string> text = ReadSmallFile(file, Links::Follow);
    std::string_view rest = text ? std::string_view(*text) : "";
    std::optional<std::string> value;
    for (bool isInSection = false; !rest.empty();) {
        const size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = Trimmed(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        const size_t equals = line.find('=');
        if (line.starts_with('['))
            isInSection = Lower(line) == "[" + std::string(section) + "]";
        else if (isInSection && equals != std::string_view::npos && Lower(Trimmed(line.substr(0, equals))) == name)
            value = Trimmed(line.substr(equals + 1));
    }
    if (value && value->size() >= 2 && value->front() == '"' && value->back() == '"')
        value = value->substr(1, value->size() - 2);
    return value;
}

// The user's own file of patterns for all trees. The tree's configuration could name another one; that is not read.
std::string UsersExcludes()
{
    const std::string configuration = base::ConfigDirectory("git");
    std::optional<std::string> named = Setting(base::Home() + ".gitconfig", "core", "excludesfile");
    if (!named)
        named = Setting(configuration + "/config", "core", "excludesfile");
    if (!named)
        named = Setting("/etc/gitconfig", "core", "excludesfile");
    if (!named)
        return configuration + "/ignore";
    return named->starts_with("~/") ? base::Home() + named->substr(2) : *named;
}

IgnoreRules::Pointer WithFollowed(const IgnoreRules::Pointer& outer, const std::string& file, std::string_view top)
{
    const std::optional<std::string> text = ReadSmallFile(file, Links::Follow);
    return text ? IgnoreRules::WithText(outer, *text, top) : outer;
}

} // namespace

GitTree::GitTree(std::string top, std::string directory)
    : top(std::move(top)), directory(std::move(directory)),
      common(PathIn(this->directory + "/commondir", "", this->directory).value_or(this->directory))
{
}

GitTree::Pointer GitTree::At(const std::string& top)
{
    std::optional<std::string> directory = GitDirectory(top);
    return directory ? std::make_shared<const GitTree>(top, std::move(*directory)) : nullptr;
}

GitTree::Pointer GitTree::Around(const std::string& directory)
{
    for (std::string each = directory;; each = base::DirectoryOf(each))
        if (Pointer tree = At(each); tree != nullptr || each.empty())
            return tree;
}

IgnoreRules::Pointer GitTree::OuterRules() const
{
    return WithFollowed(WithFollowed(nullptr, UsersExcludes(), top), common + "/info/exclude", top);
}

const GitIndex& GitTree::Index() const
{
    std::call_once(onceRead, [this] {
        const bool isLong = Lower(Setting(common + "/config", "extensions", "objectformat").value_or("")) == "sha256";
        index.emplace(directory, isLong ? 32 : 20);
    });
    return *index;
}

} // namespace symbols
