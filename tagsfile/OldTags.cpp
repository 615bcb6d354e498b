#include "tagsfile/OldTags.h"

#include "base/TextPool.h"
#include "tagsfile/TagFields.h"
#include "tagsfile/TagLine.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <system_error>
#include <unordered_map>
#include <vector>

namespace tagsfile {

namespace {

// Never blocks: the path may lead to a pipe by now.
int OpenToRead(const std::string& path)
{
    return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
}

// The lines of a file, each with one line break: adds a missing last one, and removes the carriage returns before it.
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
        while (length > 0 && buffer[length - 1] == '\r') // otherwise the next run would remove it
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

// The lines that stay, in the file's order.
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

    // Readers would take the rest of a line that is too long for another line. Without its last fields it may fit.
    bool Shorten(std::string_view& line)
    {
        if (line.length() <= kLongestLine)
            return true;
        const auto fields = AfterAddressOfLine(line);
        const size_t end = line.rfind('\t', kLongestLine - 1);
        if (!fields || end == std::string_view::npos || line.data() + end <= fields->data() + kExtensionSign.length())
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
    base::TextPool texts;
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

std::unique_ptr<LineSource> LinesThatStay(const std::string& path, std::function<bool(std::string_view field)> goes)
try {
    auto lines = std::make_unique<StayingLines>(path, std::move(goes));
    if (!lines->IsOpen())
        return nullptr;
    // The file's own claim about its order may be wrong.
    const bool sorted = IsSorted(*lines);
    lines->Rewind();
    if (sorted)
        return lines;
    return std::make_unique<SortedLines>(*lines);
} catch (const std::system_error& problem) {
    errno = problem.code().value();
    return nullptr;
}

} // namespace tagsfile
