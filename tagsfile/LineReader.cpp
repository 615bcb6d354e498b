#include "tagsfile/LineReader.h"

#include "base/PlainFile.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace tagsfile {

namespace {

// A reader that jumps needs a few lines; any other reader needs them all. So blocks begin small and grow.
constexpr size_t kFirstBlock = 8 * 1024;
constexpr size_t kLargestBlock = 64 * 1024;          // larger ones are no faster
constexpr size_t kKept = 2 * LineReader::kPieceSize; // the most that is kept from one block for the next

} // namespace

bool LineReader::Open(const char* path)
{
    descriptor = base::OpenPlainFile(path);
    const bool isNoFile = descriptor < 0 && (errno == EISDIR || errno == ENXIO);
    if (descriptor < 0 && !isNoFile)
        return false;
    // Not cleared: parts that are never read into take no memory.
    if (block == nullptr)
        block.reset(new char[kKept + kLargestBlock]);
    blockEnd = 0;
    Empty();
    atEnd = isNoFile;
    return true;
}

void LineReader::Close()
{
    if (descriptor >= 0)
        ::close(descriptor);
    descriptor = -1;
    GoToEnd();
}

void LineReader::GoTo(off_t offset)
{
    blockEnd = offset;
    Empty();
    atEnd = ::lseek(descriptor, offset, SEEK_SET) < 0;
}

void LineReader::GoToEnd()
{
    blockEnd = Offset();
    Empty();
    atEnd = true;
}

void LineReader::Empty()
{
    previous = current = next = end = block != nullptr ? block.get() : kNothing;
    blockSize = kFirstBlock;
    atEnd = false;
}

// Reads no more than it takes to get a line: a file on a slow disk yields its first lines early.
bool LineReader::NextBehindBlock(std::string_view& line)
{
    const void* lineEnd = nullptr;
    while (lineEnd == nullptr && static_cast<size_t>(end - next) < kPieceSize && !atEnd) {
        // Drops the partial piece: half a line says nothing.
        if (isCancelled != nullptr && *isCancelled) {
            GoToEnd();
            return false;
        }
        const size_t searched = static_cast<size_t>(end - next);
        ReadOn();
        const size_t found = std::min(static_cast<size_t>(end - next), kPieceSize);
        lineEnd = std::memchr(next + searched, '\n', found - searched);
    }
    if (next == end)
        return false;
    const char* const most = next + std::min(static_cast<size_t>(end - next), kPieceSize);
    line = Take(lineEnd != nullptr ? static_cast<const char*>(lineEnd) + 1 : most);
    return true;
}

// Reads more, keeping the current piece, which becomes the previous one, and the beginning of the next.
void LineReader::ReadOn()
{
    const size_t kept = static_cast<size_t>(end - current);
    std::memmove(block.get(), current, kept);
    next = block.get() + (next - current);
    previous = current = block.get();
    ssize_t count;
    do
        count = ::read(descriptor, block.get() + kept, blockSize);
    while (count < 0 && errno == EINTR);
    atEnd = count <= 0;
    end = block.get() + kept + std::max<ssize_t>(count, 0);
    blockEnd += std::max<ssize_t>(count, 0);
    blockSize = std::min(2 * blockSize, kLargestBlock);
}

} // namespace tagsfile
