#include "base/ProgressLine.h"

#include <cmath>
#include <unistd.h>

namespace base {

namespace {

constexpr std::chrono::milliseconds kBetweenDrawings{100};
constexpr const char* kToStartOfEmptyLine = "\r\033[K";

} // namespace

ProgressLine::ProgressLine(int descriptor, std::chrono::milliseconds delay)
    : descriptor(descriptor), isTerminal(::isatty(descriptor) == 1), first(start + delay)
{
}

ProgressLine::~ProgressLine()
{
    Erase();
}

void ProgressLine::Say(const std::string& lines)
{
    const std::lock_guard lock(mutex);
    EraseLocked();
    Write(lines);
}

void ProgressLine::Show(const std::function<std::string(double seconds)>& text)
{
    if (!isTerminal)
        return;
    const std::lock_guard lock(mutex);
    const Clock::time_point now = Clock::now();
    if (now < first || now - drawn < kBetweenDrawings)
        return;
    drawn = now;
    isDrawn = true;
    Write(kToStartOfEmptyLine + text(std::chrono::duration<double>(now - start).count()));
}

void ProgressLine::Erase()
{
    const std::lock_guard lock(mutex);
    EraseLocked();
}

void ProgressLine::EraseLocked()
{
    if (isDrawn)
        Write(kToStartOfEmptyLine);
    isDrawn = false;
}

// In one write, so that lines of other programs do not come in between. There is nowhere to report a failure.
void ProgressLine::Write(const std::string& text)
{
    if (::write(descriptor, text.data(), text.size()) < 0)
        return;
}

std::string ProgressText(size_t done, size_t known, double seconds)
{
    std::string text = std::to_string(done) + " of " + std::to_string(known) + (known == 1 ? " file" : " files");
    if (seconds > 0)
        text += ", " + std::to_string(std::lround(static_cast<double>(done) / seconds)) + " files/s";
    return text;
}

} // namespace base
