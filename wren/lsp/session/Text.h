// One version of a text, and positions in it.
#pragma once

#include "wren/lsp/protocol/Types.h"
#include "wren/symbols/SourceText.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace wren::lsp {

enum class Encoding { Utf8, Utf16 }; // in whose units the client counts characters of a line

// How many of the client's units a part of a line has.
unsigned CountUnits(std::string_view text, Encoding encoding);

// Lines end with "\n", "\r\n" or "\r". A byte that is not part of UTF-8 counts as one unit in either encoding.
// Immutable; any thread.
class Text {
public:
    explicit Text(std::string content);
    // The text that comes of replacing bytes [start, end) of another one. Costs less than reading all of it again.
    Text(const Text& before, size_t start, size_t end, std::string_view replacement);
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;

    const std::string& Content() const { return content; }

    size_t Lines() const { return starts.size(); } // at least 1
    size_t LineStart(size_t line) const;           // bytes; line from 0; the text's end when there is no such line
    std::string_view Line(size_t line) const;      // without its break; "" when there is no such line
    size_t LineAt(size_t offset) const;            // from 0

    // Positions behind a line's end mean its end, those behind the text's end mean that; within a character, its start.
    size_t OffsetOf(Position position, Encoding encoding) const; // bytes
    Position PositionOf(size_t offset, Encoding encoding) const;
    lsp::Range RangeOf(size_t start, size_t end, Encoding encoding) const;

    // Lines as the index counts them. Borrows this text.
    SourceText Source() const { return {content, sourceStarts.empty() ? starts : sourceStarts}; }

private:
    const std::string content;
    std::vector<size_t> starts;       // of lines
    std::vector<size_t> sourceStarts; // empty when they are the same
};

using TextPointer = std::shared_ptr<const Text>;

} // namespace wren::lsp
