#include "cplustags/OldTags.h"

#include "cplustags/TagLine.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <unordered_map>
#include <vector>

namespace cplustags {

namespace {

bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

// An ex-command: a line number or a search pattern.
bool IsAddress(std::string_view text)
{
    return !text.empty() && (IsDigit(text.front()) || text.front() == '/' || text.front() == '?');
}

bool IsTagLine(std::string_view line)
{
    if (line.substr(0, 6) == "!_TAG_")
        return true;
    const std::optional<std::string_view> field = FieldOfLine(line);
    return field && IsAddress(line.substr(NameOfLine(line).length() + field->length() + 2));
}

// Whatever bytes stand in the file, its first line tells: other tools' files do not begin like a tag.
Target KindOfText(std::string_view beginning)
{
    if (beginning.empty())
        return Target::Tags;
    const std::string_view line = beginning.substr(0, beginning.find('\n'));
    return line.find('\0') == std::string_view::npos && IsTagLine(line) ? Target::Tags : Target::Foreign;
}

// Lines of a file; the last one gets its line break when it has none.
class FileLines {
public:
    explicit FileLines(const std::string& path) : file(std::fopen(path.c_str(), "re")) {}
    ~FileLines()
    {
        if (file != nullptr)
            std::fclose(file);
        std::free(buffer);
    }
    FileLines(const FileLines&) = delete;
    FileLines& operator=(const FileLines&) = delete;

    bool IsOpen() const { return file != nullptr; }
    bool Failed() const { return std::ferror(file) != 0; }
    void Rewind() { std::rewind(file); }

    bool Next(std::string_view& line)
    {
        const ssize_t length = ::getline(&buffer, &size, file);
        if (length <= 0)
            return false;
        line = {buffer, static_cast<size_t>(length)};
        if (line.back() != '\n') {
            ended.assign(line) += '\n';
            line = ended;
        }
        return true;
    }

private:
    FILE* file;
    char* buffer = nullptr;
    size_t size = 0;
    std::string ended;
};

// The lines that stay, in the order in which they stand in the file.
class StayingLines : public LineSource {
public:
    StayingLines(const std::string& path, std::function<bool(std::string_view)> goes) : lines(path), goes(goes) {}

    bool IsOpen() const { return lines.IsOpen(); }
    bool Failed() const { return lines.Failed(); }
    void Rewind() { lines.Rewind(); }

    bool Next(std::string_view& line) override
    {
        while (lines.Next(line))
            if (Stays(line))
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
        const auto known = answers.find(std::string(*field));
        if (known != answers.end())
            return !known->second;
        return !(answers[std::string(*field)] = goes(*field));
    }

    FileLines lines;
    std::function<bool(std::string_view)> goes;
    std::unordered_map<std::string, bool> answers; // by field
};

class SortedLines : public LineSource {
public:
    explicit SortedLines(LineSource& unsorted)
    {
        for (std::string_view line; unsorted.Next(line);)
            lines.emplace_back(line);
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
    std::vector<std::string> lines;
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
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return Target::Unreadable;
    char beginning[8 * 1024];
    const ssize_t length = ::read(file, beginning, sizeof beginning);
    ::close(file);
    return length < 0 ? Target::Unreadable : KindOfText({beginning, static_cast<size_t>(length)});
}

std::unique_ptr<LineSource> LinesThatStay(const std::string& path, std::function<bool(std::string_view field)> goes)
{
    auto lines = std::make_unique<StayingLines>(path, std::move(goes));
    if (!lines->IsOpen())
        return nullptr;
    // What its header says about the order may be a lie.
    const bool sorted = IsSorted(*lines);
    if (lines->Failed())
        return nullptr;
    lines->Rewind();
    if (sorted)
        return lines;
    return std::make_unique<SortedLines>(*lines);
}

} // namespace cplustags
