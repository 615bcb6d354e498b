#include "tagsfile/TagsFileKind.h"

#include "base/Descriptor.h"
#include "tagsfile/TagFields.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace tagsfile {

namespace {

constexpr size_t kLookedAt = 8 * 1024; // bytes to examine

enum class LineKind {
    NoTag,
    Plain,    // the oldest format, "name<tab>file<tab>address"; other tables may have three columns too
    Extended, // with the sign that begins the fields, which no other format has
    PseudoTag,
};

LineKind KindOfLine(std::string_view line)
{
    if (line.substr(0, 6) == "!_TAG_")
        return LineKind::PseudoTag;
    const auto rest = AfterAddressOfLine(line);
    if (!rest || line.find('\0') != std::string_view::npos)
        return LineKind::NoTag;
    if (rest->substr(0, kExtensionSign.length()) == kExtensionSign)
        return LineKind::Extended;
    return rest->empty() || *rest == "\r" ? LineKind::Plain : LineKind::NoTag;
}

// Takes a line off the front, without its line break.
std::string_view CutLine(std::string_view& text)
{
    const size_t end = std::min(text.find('\n'), text.length());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.length()));
    return line;
}

bool NamesAFile(std::string_view line, std::string_view directory)
{
    const std::optional<std::string_view> field = FieldOfLine(line);
    struct stat status;
    return field && ::stat(PathOfField(*field, directory).c_str(), &status) == 0;
}

// All lines must be alike, except for a last one that may be cut off.
bool IsOldestFormat(std::string_view beginning, std::string_view directory)
{
    bool namesAFile = false;
    do {
        const bool isWhole = beginning.find('\n') != std::string_view::npos;
        const std::string_view line = CutLine(beginning);
        if (isWhole && KindOfLine(line) == LineKind::NoTag)
            return false;
        namesAFile = namesAFile || NamesAFile(line, directory);
    } while (!beginning.empty());
    return namesAFile;
}

// The first line decides if only tags files have such a line.
Target KindOfText(std::string_view beginning, std::string_view directory)
{
    if (beginning.empty())
        return Target::Tags;
    std::string_view rest = beginning;
    const LineKind first = KindOfLine(CutLine(rest));
    const bool isTags = first == LineKind::PseudoTag || first == LineKind::Extended ||
                        (first == LineKind::Plain && IsOldestFormat(beginning, directory));
    return isTags ? Target::Tags : Target::Foreign;
}

// Never blocks: the path may lead to a pipe.
std::optional<std::string> BeginningOf(const std::string& path, int flags)
{
    const base::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | flags));
    if (!file.IsOpen())
        return std::nullopt;
    std::string beginning(kLookedAt, '\0');
    const ssize_t length = ::read(file.Number(), beginning.data(), beginning.size());
    if (length < 0)
        return std::nullopt;
    beginning.resize(static_cast<size_t>(length));
    return beginning;
}

std::string DirectoryOf(const std::string& path)
{
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash);
}

} // namespace

Target WhatIs(const std::string& path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) != 0)
        return errno == ENOENT || errno == ENOTDIR ? Target::Absent : Target::Unreadable;
    if (!S_ISREG(status.st_mode))
        return Target::Foreign;
    const std::optional<std::string> beginning = BeginningOf(path, 0);
    return beginning ? KindOfText(*beginning, DirectoryOf(path)) : Target::Unreadable;
}

bool IsFromOurProgram(const std::string& path)
{
    const std::optional<std::string> beginning = BeginningOf(path, O_NOFOLLOW);
    std::string_view rest = beginning ? *beginning : std::string_view();
    while (!rest.empty())
        if (const std::string_view line = CutLine(rest); line.starts_with("!_TAG_PROGRAM_NAME\tcplustags\t"))
            return true;
    return false;
}

} // namespace tagsfile
