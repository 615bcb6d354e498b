// The text that a scan reads, wherever it is stored.
#pragma once

#include <string>
#include <string_view>

namespace scan {

// The scanners' interface to a text.
//
// Offsets are bytes, from 0; ranges are half-open. The text must not change during a scan. The owner of the text
// decides which thread may scan.
class Text {
public:
    // '\0' outside the text: scanners read one character before its beginning and one behind its end.
    virtual char At(long offset) const = 0;

    virtual long Length() const = 0;

    // The bytes of [start, end), with '\0' for each byte outside the text.
    virtual std::string Range(long start, long end) const = 0;

    virtual long LineAt(long offset) const = 0; // from 0; only "\n" ends a line

protected:
    ~Text() = default;
};

// A borrowed text in memory. Any thread.
class StringText final : public Text {
public:
    explicit StringText(std::string_view text) : text(text) {}

    char At(long offset) const override { return offset >= 0 && offset < Length() ? text[Index(offset)] : '\0'; }
    long Length() const override { return static_cast<long>(text.length()); }
    std::string Range(long start, long end) const override;
    long LineAt(long offset) const override; // an offset behind the text is on the last line

private:
    static size_t Index(long offset) { return static_cast<size_t>(offset); }

    std::string_view text;
};

// True when a selection can be a name: on one line, and at most 1024 bytes long.
bool IsScannable(const Text& text, long selStart, long selEnd);

} // namespace scan
