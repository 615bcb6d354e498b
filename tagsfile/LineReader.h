// Reads the lines of a file one after the other.
#pragma once

#include "tagsfile/TagFields.h"

#include <atomic>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <sys/types.h>

namespace tagsfile {

// A line longer than a piece is read as several lines: the pieces are those of fgets() with kPieceSize + 1 bytes. They
// include their line breaks, and NUL bytes are ordinary bytes. The file is read, never mapped into memory, so a file
// that is truncated meanwhile just ends there. Read errors and cancellation end the file as well.
//
// Not thread-safe. Only Close() closes the file: neither destruction nor opening another does.
class LineReader {
public:
    static constexpr size_t kPieceSize = kLongestLine;

    // While '*isCancelled' is true, every file ends at the next block. Null for a reader that is never cancelled. It
    // must outlive the reader.
    explicit LineReader(const std::atomic<bool>* isCancelled = nullptr) : isCancelled(isCancelled) {}

    // Begins at the start of the file. False when it cannot be opened. A directory, pipe or device has no lines, and
    // does not block.
    bool Open(const char* path);
    void Close();
    int Descriptor() const { return descriptor; } // -1 when closed, and for anything but a file

    // The next piece; valid until the next call. False at the end, on every later call, and when closed.
    bool Next(std::string_view& line)
    {
        const char* const behind = BehindLine(next);
        if (behind == nullptr && end - next < static_cast<ptrdiff_t>(kPieceSize))
            return NextBehindBlock(line);
        line = Take(behind != nullptr ? behind : next + kPieceSize);
        return true;
    }

    // Skips lines while 'passes' is true for the previous line and the next one, both complete pieces with a line
    // break. Stops at the end of the block at the latest. Next() returns what follows.
    template <class Passes>
    void PassOver(Passes passes)
    {
        if (next == current || next[-1] != '\n')
            return;
        const char* before = current;
        const char* line = next;
        while (const char* const behind = BehindLine(line)) {
            if (!passes(std::string_view(before, line), std::string_view(line, behind)))
                break;
            before = line;
            line = behind;
        }
        previous = current = before;
        next = line;
    }

    // The result of the previous call; valid as long as the current piece. Empty for the first piece, and for the first
    // one after a jump.
    std::string_view Previous() const { return {previous, static_cast<size_t>(current - previous)}; }

    // The file offset of the next piece. Undefined for anything but a file of a fixed size.
    off_t Offset() const { return blockEnd - (end - next); }
    void GoTo(off_t offset); // the first byte of a piece
    void GoToEnd();          // as if the last piece had been read

private:
    // Null when the block has no line break for a piece that begins at 'start'.
    const char* BehindLine(const char* start) const
    {
        const size_t rest = static_cast<size_t>(end - start);
        const void* const lineEnd = std::memchr(start, '\n', rest < kPieceSize ? rest : kPieceSize);
        return lineEnd != nullptr ? static_cast<const char*>(lineEnd) + 1 : nullptr;
    }
    std::string_view Take(const char* pieceEnd)
    {
        previous = current;
        current = next;
        next = pieceEnd;
        return {current, static_cast<size_t>(next - current)};
    }
    bool NextBehindBlock(std::string_view& line);
    void ReadOn();
    void Empty();

    static constexpr char kNothing[] = "";

    const std::atomic<bool>* isCancelled;
    int descriptor = -1;
    std::unique_ptr<char[]> block; // the data read; all pointers point into it
    const char* previous = kNothing;
    const char* current = kNothing;
    const char* next = kNothing;
    const char* end = kNothing;
    off_t blockEnd = 0; // offset of 'end'
    size_t blockSize = 0;
    bool atEnd = true;
};

} // namespace tagsfile
