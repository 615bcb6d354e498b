// The lines of a file, one after the other.
#pragma once

#include "tagsfile/TagFields.h"

#include <atomic>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <sys/types.h>

namespace tagsfile {

// A line that is longer than a piece is read in several, each of them a line of its own: the same pieces as fgets()
// with kPieceSize + 1 bytes gives, with their line breaks, and NUL bytes like any other. The file is read, never mapped
// into memory, so that one that is cut short meanwhile just ends there; also what cannot be read ends, and every file
// while reading is cancelled.
//
// Not thread-safe. Destruction does not close the file, nor does opening another: for both there is Close().
class LineReader {
public:
    static constexpr size_t kPieceSize = kLongestLine;

    // While '*isCancelled' is true every file ends at the next block; null for a reader that nobody cancels. It must
    // outlive the reader.
    explicit LineReader(const std::atomic<bool>* isCancelled = nullptr) : isCancelled(isCancelled) {}

    // At the file's beginning. False when it cannot be opened. A directory, pipe or device has no lines, and is not
    // waited for.
    bool Open(const char* path);
    void Close();
    int Descriptor() const { return descriptor; } // -1 when closed, and for what is no file

    // The next piece; valid until the next call. False at the end, from then on, and when closed.
    bool Next(std::string_view& line)
    {
        const char* const behind = BehindLine(next);
        if (behind == nullptr && end - next < static_cast<ptrdiff_t>(kPieceSize))
            return NextBehindBlock(line);
        line = Take(behind != nullptr ? behind : next + kPieceSize);
        return true;
    }

    // Passes over lines as long as 'passes' says so of the line before and the next one, both of them whole pieces that
    // end with a line break; ends at the latest where the file is read on. What comes next is for Next().
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

    // What the call before gave, for as long as the present piece is valid; empty for the first piece, and for the
    // first one behind a jump.
    std::string_view Previous() const { return {previous, static_cast<size_t>(current - previous)}; }

    // Where in the file the next piece begins. Not known for what is no file of a fixed size.
    off_t Offset() const { return blockEnd - (end - next); }
    void GoTo(off_t offset); // of a piece's first byte
    void GoToEnd();          // as after the last piece

private:
    // Null when the block has no line break for a piece that begins there.
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
    std::unique_ptr<char[]> block; // what is read; all pointers point into it
    const char* previous = kNothing;
    const char* current = kNothing;
    const char* next = kNothing;
    const char* end = kNothing;
    off_t blockEnd = 0; // offset of 'end'
    size_t blockSize = 0;
    bool atEnd = true;
};

} // namespace tagsfile
