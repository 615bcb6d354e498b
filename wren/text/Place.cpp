#include "wren/text/Place.h"

#include "base/Identifier.h"

#include <algorithm>
#include <charconv>

namespace wren {

namespace {

// Takes ":NUMBER" off the end of 'text', for a number of 1 or more.
std::optional<long> TakeNumber(std::string& text)
{
    const size_t colon = text.rfind(':');
    if (colon == std::string::npos)
        return std::nullopt;
    long number = 0;
    const char* begin = text.data() + colon + 1;
    const char* end = text.data() + text.size();
    const auto [stop, problem] = std::from_chars(begin, end, number);
    if (problem != std::errc() || stop != end || begin == end || number < 1)
        return std::nullopt;
    text.resize(colon);
    return number;
}

struct Line {
    size_t start;
    size_t end; // before its "\n"
};

std::optional<Line> FindLine(const std::string& text, long number)
{
    size_t start = 0;
    for (long line = 1; line < number; ++line) {
        start = text.find('\n', start);
        if (start == std::string::npos)
            return std::nullopt;
        ++start;
    }
    return Line{start, std::min(text.find('\n', start), text.size())};
}

size_t FirstIdentifier(const std::string& text, Line line)
{
    for (size_t offset = line.start; offset < line.end; ++offset)
        if (base::IsIdentifierStart(text[offset]))
            return offset;
    return line.start;
}

size_t EndOfWords(const std::string& text, Line line)
{
    return line.end > line.start && text[line.end - 1] == '\r' ? line.end - 1 : line.end;
}

} // namespace

std::string Place::Text() const
{
    return file + ":" + std::to_string(line) + (column > 0 ? ":" + std::to_string(column) : "");
}

std::optional<Place> ParsePlace(const std::string& text, std::string* error)
{
    Place place;
    place.file = text;
    const std::optional<long> last = TakeNumber(place.file);
    const std::optional<long> before = last ? TakeNumber(place.file) : std::nullopt;
    if (!last || place.file.empty()) {
        *error = "\"" + text + "\" is not FILE:LINE or FILE:LINE:COLUMN, with numbers from 1";
        return std::nullopt;
    }
    place.line = before.value_or(*last);
    place.column = before ? *last : 0;
    return place;
}

std::optional<long> OffsetOf(const Place& place, WithoutColumn withoutColumn, const std::string& text,
                             std::string* error)
{
    const std::optional<Line> line = FindLine(text, place.line);
    if (!line) {
        const long lines = 1 + std::count(text.begin(), text.end(), '\n');
        *error = place.file + " has only " + std::to_string(lines) + (lines == 1 ? " line" : " lines");
        return std::nullopt;
    }
    if (place.column == 0)
        return static_cast<long>(withoutColumn == WithoutColumn::LineEnd ? EndOfWords(text, *line)
                                                                         : FirstIdentifier(text, *line));
    const size_t offset = line->start + static_cast<size_t>(place.column) - 1;
    if (offset > line->end) {
        *error = place.file + ":" + std::to_string(place.line) + " has only " +
                 std::to_string(line->end - line->start) + " columns";
        return std::nullopt;
    }
    return static_cast<long>(offset);
}

} // namespace wren
