// The text that a scan reads, whatever holds it.
#pragma once

#include <string>
#include <string_view>

namespace scan {

// All that a scanner asks of a text.
//
// Offsets are bytes, counted from 0; ranges include their start and not their end. The text must not change during a
// scan. Which thread may scan is for the one that holds the text to say.
class Text {
public:
    // '\0' outside the text: scanners read just before its beginning and just behind its end.
    virtual char At(long offset) const = 0;

    virtual long Length() const = 0;

    // The text of [start, end), with '\0' for each byte outside the text.
    virtual std::string Range(long start, long end) const = 0;

    virtual long LineAt(long offset) const = 0; // from 0; only "\n" ends a line

protected:
    ~Text() = default;
};

// A text in memory, which it borrows. Any thread.
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

// Whether a selection is small enough to mean a name: on one line, and at most 1024 long.
bool IsScannable(const Text& text, long selStart, long selEnd);

} // namespace scan
