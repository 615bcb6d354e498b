#include "tagsfile/Bisection.h"

#include "tagsfile/LineReader.h"
#include "tagsfile/NameOrder.h"

#include <array>
#include <cerrno>
#include <string>
#include <unistd.h>

namespace tagsfile {

namespace {

// Enough to see one line from any place before it: the end of another line, and all of this one.
constexpr size_t kWindow = 2 * LineReader::kPieceSize + 1;
constexpr off_t kNearEnough = 4 * 1024; // reading this far takes no longer than another look

struct Line {
    off_t offset;
    std::string name;
};

class Window {
public:
    explicit Window(int descriptor) : descriptor(descriptor) {}

    // The first line that begins at or after 'offset', which is not the file's beginning. Nullopt if none is close
    // enough for a file that is in order.
    std::optional<Line> LineFrom(off_t offset)
    {
        // The offset itself begins a line if the byte before it ends another.
        const std::string_view text = Read(offset - 1);
        const size_t before = text.substr(0, LineReader::kPieceSize).find('\n');
        if (before == std::string_view::npos)
            return std::nullopt;
        const std::string_view rest = text.substr(before + 1, LineReader::kPieceSize);
        const size_t end = rest.find('\n');
        if (end == std::string_view::npos)
            return std::nullopt;
        return Line{offset + static_cast<off_t>(before), std::string(NameInLine(rest.substr(0, end + 1)))};
    }

private:
    std::string_view Read(off_t offset)
    {
        ssize_t count;
        do
            count = ::pread(descriptor, text.data(), text.size(), offset);
        while (count < 0 && errno == EINTR);
        return {text.data(), count > 0 ? static_cast<size_t>(count) : 0};
    }

    int descriptor;
    std::array<char, kWindow> text;
};

} // namespace

std::optional<off_t> PlaceOfLines(int descriptor, off_t first, off_t size, std::string_view start)
{
    Window window(descriptor);
    Line low{first, ""}; // all lines before it are before 'start'
    Line high{size, ""}; // it and all lines after it are not; the end has no name
    while (high.offset - low.offset > kNearEnough) {
        std::optional<Line> line = window.LineFrom(low.offset + (high.offset - low.offset) / 2);
        if (!line || line->name < low.name || (high.offset != size && line->name > high.name))
            return std::nullopt;
        (line->name.compare(0, start.length(), start) < 0 ? low : high) = std::move(*line);
    }
    return low.offset;
}

} // namespace tagsfile
