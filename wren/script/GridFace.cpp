#include "wren/script/GridFace.h"

#include "base/Utf8.h"
#include "wren/core/Document.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace wren {

namespace {

struct Cell {
    float column;
    float line;
};

// The cell of the character at 'offset'.
Cell CellOf(const Document& document, long offset)
{
    offset = std::clamp(offset, 0L, document.Length());
    const long line = document.LineAt(offset);
    const long start = document.LineStart(line);
    const std::string text = document.Text(start, document.LineEnd(line));
    std::string_view rest = text;
    long column = 0;
    for (long at = start; at < offset; ++column) {
        const long length = static_cast<long>(base::CodePointLength(rest));
        if (at + length > offset)
            break;
        at += length;
        rest.remove_prefix(length);
    }
    return {static_cast<float>(column), static_cast<float>(line)};
}

// A coordinate as a whole number of cells, clamped to the range of a long.
long CellsIn(float coordinate, float cell)
{
    return static_cast<long>(std::clamp(std::floor(coordinate / cell), 0.0f, 1e9f));
}

} // namespace

BRect GridFace::DocumentWindowFrame() const
{
    return {40, 60, 760, 700};
}

BRect GridFace::TextBounds(const Document&) const
{
    return {0, 0, 700, 600};
}

BRect GridFace::ButtonFrame(const Document&) const
{
    return {8, 4, 24, 20};
}

BPoint GridFace::PointAt(const Document& document, long offset) const
{
    const Cell cell = CellOf(document, offset);
    return {kFirstBaseline.x + kCellWidth * cell.column, kFirstBaseline.y + kCellHeight * cell.line};
}

long GridFace::OffsetAt(const Document& document, BPoint where) const
{
    const long line = CellsIn(where.y, kCellHeight);
    const long start = document.LineStart(line);
    if (start == document.Length())
        return start;
    const std::string text = document.Text(start, document.LineEnd(line));
    std::string_view rest = text;
    long offset = start;
    for (long column = CellsIn(where.x, kCellWidth); column > 0 && !rest.empty(); --column) {
        const size_t length = base::CodePointLength(rest);
        offset += static_cast<long>(length);
        rest.remove_prefix(length);
    }
    return offset;
}

BPoint GridFace::CellCentre(const Document& document, long offset) const
{
    const Cell cell = CellOf(document, offset);
    return {kCellWidth * cell.column + 3, kCellHeight * cell.line + 7};
}

} // namespace wren
