#include "cplustags/OldTags.h"

#include "cplustags/Descriptor.h"
#include "cplustags/TagLine.h"
#include "cplustags/TextPool.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <unordered_map>
#include <vector>

namespace cplustags {

namespace {

enum class LineKind {
    NoTag,
    Plain,    // of the oldest format: "name<tab>file<tab>address"; other tables have three columns, too
    Extended, // with the sign that begins the fields, which nothing else has
    PseudoTag,
};

constexpr std::string_view kExtensionSign = ";\"";

// Without the search pattern, from delimiter to delimiter, that the text begins with; nothing when it does not.
std::optional<std::string_view> AfterPattern(std::string_view text)
{
    if (text.empty() || (text.front() != '/' && text.front() != '?'))
        return std::nullopt;
    for (size_t i = 1; i < text.length(); ++i) {
        if (text[i] == '\\')
            ++i;
        else if (text[i] == text.front())
            return text.substr(i + 1);
    }
    return std::nullopt;
}

// Without the line number, pattern, or both with a ';' between, that the text begins with.
std::optional<std::string_view> AfterAddress(std::string_view text)
{
    const size_t digits = std::min(text.find_first_not_of("0123456789"), text.length());
    if (digits == 0)
        return AfterPattern(text);
    text.remove_prefix(digits);
    if (text.substr(0, 1) == ";")
        if (const auto rest = AfterPattern(text.substr(1)))
            return rest;
    return text;
}

// What follows the address of a line, if it is a tag's.
std::optional<std::string_view> AfterAddressOfLine(std::string_view line)
{
    const std::optional<std::string_view> field = FieldOfLine(line);
    if (!field)
        return std::nullopt;
    return AfterAddress(line.substr(NameOfLine(line).length() + field->length() + 2));
}

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

// The first line tells, where it is one that only tags files have; else all must be alike, but for a last one that may
// have been cut off.
Target KindOfText(std::string_view beginning)
{
    if (beginning.empty())
        return Target::Tags;
    const LineKind first = KindOfLine(CutLine(beginning));
    bool allAre = first == LineKind::Plain;
    while (allAre && beginning.find('\n') != std::string_view::npos)
        allAre = KindOfLine(CutLine(beginning)) != LineKind::NoTag;
    return first == LineKind::PseudoTag || first == LineKind::Extended || allAre ? Target::Tags : Target::Foreign;
}

// Never waits: what was a file a moment ago may be a pipe now.
int OpenToRead(const std::string& path)
{
    return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
}

// Lines of a file, each with its line break: the last one gets one when it has none, and carriage returns before it go.
class FileLines {
public:
    explicit FileLines(const std::string& path)
    {
        const int number = OpenToRead(path);
        file = number < 0 ? nullptr : ::fdopen(number, "r");
    }
    ~FileLines()
    {
        if (file != nullptr)
            std::fclose(file);
        std::free(buffer);
    }
    FileLines(const FileLines&) = delete;
    FileLines& operator=(const FileLines&) = delete;

    bool IsOpen() const { return file != nullptr; }
    void Rewind() { std::rewind(file); }

    // Throws std::system_error when the file cannot be read.
    bool Next(std::string_view& line)
    {
        ssize_t length = ::getline(&buffer, &size, file);
        if (length < 0 && std::feof(file) == 0)
            throw std::system_error(errno, std::generic_category(), "cannot read the old tags file");
        if (length <= 0)
            return false;
        if (buffer[length - 1] == '\n')
            --length;
        while (length > 0 && buffer[length - 1] == '\r') // one that stayed would go at the next time
            --length;
        buffer[length] = '\n'; // getline() left room for a zero
        line = {buffer, static_cast<size_t>(length) + 1};
        return true;
    }

private:
    FILE* file = nullptr;
    char* buffer = nullptr;
    size_t size = 0;
};

struct TextHash {
    using is_transparent = void;
    size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};

// The lines that stay, in the order in which they stand in the file.
class StayingLines : public LineSource {
public:
    StayingLines(const std::string& path, std::function<bool(std::string_view)> goes)
        : lines(path), goes(std::move(goes))
    {
    }

    bool IsOpen() const { return lines.IsOpen(); }
    void Rewind() { lines.Rewind(); }

    bool Next(std::string_view& line) override
    {
        while (lines.Next(line))
            if (Stays(line) && Shorten(line))
                return true;
        return false;
    }

private:
    bool Stays(std::string_view line)
    {
        if (line == "\n" || line.front() == '!')
            return false;
        const std::optional<std::string_view> field = FieldOfLine(line);
        if (!field)
            return true;
        auto known = answers.find(*field);
        if (known == answers.end())
            known = answers.emplace(*field, goes(*field)).first;
        return !known->second;
    }

    // Readers would take the rest of a line that is too long for one of its own. Without its last fields it may not be.
    bool Shorten(std::string_view& line)
    {
        if (line.length() <= kLongestLine)
            return true;
        const auto fields = AfterAddressOfLine(line);
        const size_t end = line.rfind('\t', kLongestLine - 1);
        if (!fields || end == std::string_view::npos ||
            line.data() + end <= fields->data() + kExtensionSign.length())
            return false;
        shortened.assign(line.substr(0, end)) += '\n';
        line = shortened;
        return true;
    }

    FileLines lines;
    std::function<bool(std::string_view)> goes;
    std::unordered_map<std::string, bool, TextHash, std::equal_to<>> answers; // by field
    std::string shortened;
};

class SortedLines : public LineSource {
public:
    explicit SortedLines(LineSource& unsorted)
    {
        for (std::string_view line; unsorted.Next(line);)
            lines.push_back(texts.Put(line));
        std::sort(lines.begin(), lines.end());
    }

    bool Next(std::string_view& line) override
    {
        if (position == lines.size())
            return false;
        line = lines[position++];
        return true;
    }

private:
    TextPool texts;
    std::vector<std::string_view> lines;
    size_t position = 0;
};

bool IsSorted(LineSource& lines)
{
    std::string last;
    for (std::string_view line; lines.Next(line);) {
        if (line < last)
            return false;
        last.assign(line);
    }
    return true;
}

} // namespace

Target WhatIs(const std::string& path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) != 0)
        return errno == ENOENT || errno == ENOTDIR ? Target::Absent : Target::Unreadable;
    if (!S_ISREG(status.st_mode))
        return Target::Foreign;
    const Descriptor file(OpenToRead(path));
    char beginning[8 * 1024];
    const ssize_t length = file.IsOpen() ? ::read(file.Number(), beginning, sizeof beginning) : -1;
    return length < 0 ? Target::Unreadable : KindOfText({beginning, static_cast<size_t>(length)});
}

std::unique_ptr<LineSource> LinesThatStay(const std::string& path, std::function<bool(std::string_view field)> goes)
try {
    auto lines = std::make_unique<StayingLines>(path, std::move(goes));
    if (!lines->IsOpen())
        return nullptr;
    // What its header says about the order may be a lie.
    const bool sorted = IsSorted(*lines);
    lines->Rewind();
    if (sorted)
        return lines;
    return std::make_unique<SortedLines>(*lines);
} catch (const std::system_error& problem) {
    errno = problem.code().value();
    return nullptr;
}

} // namespace cplustags
