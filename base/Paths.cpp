#include "base/Paths.h"

#include "base/Utf8.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace base {

namespace {

constexpr size_t kLongestShown = 500;

bool AreSame(const std::string& a, const std::string& b)
{
    struct stat one;
    struct stat other;
    return ::stat(a.c_str(), &one) == 0 && ::stat(b.c_str(), &other) == 0 && one.st_dev == other.st_dev &&
           one.st_ino == other.st_ino;
}

enum class DotDot { Stays, Goes };

// For an absolute path.
std::string Tidied(std::string_view path, DotDot dotDot)
{
    std::string result;
    while (!path.empty()) {
        const size_t end = std::min(path.find('/'), path.size());
        const std::string_view part = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (part.empty() || part == ".")
            continue;
        if (part == ".." && dotDot == DotDot::Goes)
            result.erase(result.empty() ? 0 : result.rfind('/'));
        else
            result.append("/").append(part);
    }
    return result.empty() ? "/" : result;
}

bool HasDotDot(const std::string& path)
{
    return (path + "/").find("/../") != std::string::npos;
}

void AppendEscapes(std::string& text, std::string_view bytes)
{
    for (const unsigned char byte : bytes) {
        char escape[8];
        if (byte == '\n')
            text += "\\n";
        else if (byte == '\t')
            text += "\\t";
        else
            text.append(escape, static_cast<size_t>(std::snprintf(escape, sizeof escape, "\\x%02x", byte)));
    }
}

void AppendShown(std::string& shown, std::string_view text)
{
    while (!text.empty()) {
        const std::string_view character = FirstCharacter(text);
        if (IsControl(character))
            AppendEscapes(shown, character);
        else
            shown += character;
        text.remove_prefix(character.length());
    }
}

} // namespace

std::string CurrentDirectory()
{
    const char* named = std::getenv("PWD");
    if (named != nullptr && named[0] == '/' && AreSame(named, "."))
        return Tidied(named, DotDot::Stays);
    char* found = ::getcwd(nullptr, 0);
    std::string path = found != nullptr ? found : "/";
    std::free(found);
    return path;
}

std::string AbsolutePath(std::string_view name, std::string_view directory)
{
    std::string path(name);
    if (path.empty() || path[0] != '/')
        path = std::string(directory) + "/" + path;
    path = Tidied(path, DotDot::Stays);
    if (!HasDotDot(path))
        return path;
    const std::string shorter = Tidied(path, DotDot::Goes);
    return AreSame(path, shorter) ? shorter : path;
}

std::string DirectoryOf(std::string_view path)
{
    return std::string(path.substr(0, path.rfind('/')));
}

std::string Shown(std::string_view text)
{
    std::string shown;
    const bool isLong = text.size() > kLongestShown;
    AppendShown(shown, isLong ? text.substr(0, kLongestShown / 2) : text);
    if (isLong) {
        shown += "...";
        AppendShown(shown, text.substr(text.size() - kLongestShown / 2));
    }
    return shown;
}

std::string ShownLines(std::string_view text)
{
    std::string shown;
    for (size_t end; (end = text.find('\n')) != std::string_view::npos; text.remove_prefix(end + 1)) {
        AppendShown(shown, text.substr(0, end));
        shown += '\n';
    }
    AppendShown(shown, text);
    return shown;
}

} // namespace base
