#include "cplustags/NameLines.h"

#include "cplustags/Interrupt.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <unistd.h>

namespace cplustags {

namespace {

constexpr int kPatience = 100; // milliseconds

// Real paths are shorter. Longer lines are cut, so that an endless line does not fill the memory.
constexpr size_t kLongestName = 16 * 1024;

} // namespace

NameLines::NameLines(int descriptor, std::function<bool()> goOn)
    : descriptor(descriptor), goOn(std::move(goOn)), atEnd(descriptor < 0)
{
}

bool NameLines::Has(size_t index)
{
    while (lines.size() <= index && !atEnd)
        Read();
    return index < lines.size();
}

void NameLines::Drop(size_t count)
{
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(count));
}

void NameLines::Read()
{
    pollfd places[] = {{descriptor, POLLIN, 0}, {Interruption().Descriptor(), POLLIN, 0}};
    if (::poll(places, std::size(places), kPatience) <= 0 || places[0].revents == 0) {
        atEnd = !goOn();
        return;
    }
    char text[64 * 1024];
    const ssize_t size = ::read(descriptor, text, sizeof text);
    if (size > 0)
        return Split(text, static_cast<size_t>(size));
    if (size < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (size < 0)
        error = std::strerror(errno);
    atEnd = true;
    if (!unfinished.empty())
        lines.push_back(std::move(unfinished));
}

void NameLines::Split(const char* text, size_t size)
{
    const char* const end = text + size;
    while (const char* lineBreak = static_cast<const char*>(std::memchr(text, '\n', end - text))) {
        Append(text, lineBreak - text);
        lines.push_back(std::move(unfinished));
        unfinished.clear();
        text = lineBreak + 1;
    }
    Append(text, end - text);
}

void NameLines::Append(const char* text, size_t size)
{
    unfinished.append(text, std::min(size, kLongestName - unfinished.size()));
}

} // namespace cplustags
