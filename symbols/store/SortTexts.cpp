#include "symbols/store/SortTexts.h"

#include <algorithm>

namespace symbols {

namespace {

// Eight bytes of a text as a number that sorts as they do, and how many of them there are: a text sorts before those
// that it begins.
struct Piece {
    std::uint64_t bytes;
    std::uint32_t number;
    std::uint32_t length;

    bool operator<(const Piece& other) const
    {
        if (bytes != other.bytes)
            return bytes < other.bytes;
        return length != other.length ? length < other.length : number < other.number;
    }
};

class Sorter {
public:
    Sorter(Case sensitivity, const std::function<std::string_view(std::uint32_t)>& textOf)
        : ignoresCase(sensitivity == Case::Ignored), textOf(textOf)
    {
    }

    // Looks at eight bytes at a time: texts lie anywhere in memory, and many begin alike.
    void Sort(std::vector<Piece>& pieces)
    {
        for (open = {{0, pieces.size(), 0}}; !open.empty();) {
            const Range range = open.back();
            open.pop_back();
            SortRange(pieces, range);
        }
    }

private:
    struct Range { // of texts whose first 'depth' bytes are the same
        size_t from;
        size_t to;
        size_t depth;
    };

    void SortRange(std::vector<Piece>& pieces, const Range& range)
    {
        for (size_t i = range.from; i < range.to; i++)
            Load(&pieces[i], range.depth);
        std::sort(&pieces[range.from], &pieces[range.from] + (range.to - range.from));
        for (size_t i = range.from, end = i; i < range.to; i = end) {
            while (end < range.to && pieces[end].bytes == pieces[i].bytes && pieces[end].length == pieces[i].length)
                end++;
            if (end - i > 1 && pieces[i].length == sizeof(pieces[i].bytes))
                open.push_back({i, end, range.depth + sizeof(pieces[i].bytes)});
        }
    }

    void Load(Piece* piece, size_t depth) const
    {
        std::string_view text = textOf(piece->number);
        text = text.substr(std::min(depth, text.size()), sizeof(piece->bytes));
        piece->bytes = 0;
        piece->length = static_cast<std::uint32_t>(text.size());
        for (size_t i = 0; i < sizeof(piece->bytes); i++) {
            const char c = i < text.size() ? (ignoresCase ? Lower(text[i]) : text[i]) : '\0';
            piece->bytes = piece->bytes << 8 | static_cast<unsigned char>(c);
        }
    }

    bool ignoresCase;
    const std::function<std::string_view(std::uint32_t)>& textOf;
    std::vector<Range> open; // not sorted yet
};

} // namespace

int CompareIgnoringCase(std::string_view a, std::string_view b)
{
    const size_t common = std::min(a.size(), b.size());
    for (size_t i = 0; i < common; i++) {
        const auto left = static_cast<unsigned char>(Lower(a[i]));
        const auto right = static_cast<unsigned char>(Lower(b[i]));
        if (left != right)
            return left < right ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

void SortTexts(std::vector<std::uint32_t>& numbers, Case sensitivity,
               const std::function<std::string_view(std::uint32_t)>& textOf)
{
    std::vector<Piece> pieces(numbers.size());
    for (size_t i = 0; i < numbers.size(); i++)
        pieces[i].number = numbers[i];
    if (!pieces.empty())
        Sorter(sensitivity, textOf).Sort(pieces);
    for (size_t i = 0; i < numbers.size(); i++)
        numbers[i] = pieces[i].number;
}

} // namespace symbols
