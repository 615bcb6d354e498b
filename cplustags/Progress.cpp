#include "cplustags/Progress.h"

#include <cmath>
#include <unistd.h>

namespace cplustags {

namespace {

constexpr std::chrono::milliseconds kBetweenDrawings{100};
constexpr const char* kToStartOfEmptyLine = "\r\033[K";

} // namespace

std::string ProgressText(size_t done, size_t known, double seconds)
{
    std::string text = std::to_string(done) + " of " + std::to_string(known) + (known == 1 ? " file" : " files");
    if (seconds > 0)
        text += ", " + std::to_string(std::lround(static_cast<double>(done) / seconds)) + " files/s";
    return text;
}

Progress::Progress(int descriptor) : descriptor(descriptor), isTerminal(::isatty(descriptor) == 1) {}

Progress::~Progress()
{
    Erase();
}

void Progress::Say(const std::string& message)
{
    const std::lock_guard lock(mutex);
    EraseLocked();
    Write("cplustags: " + message + "\n");
}

void Progress::Show(size_t done, size_t known)
{
    if (!isTerminal)
        return;
    const std::lock_guard lock(mutex);
    const Clock::time_point now = Clock::now();
    if (now - drawn < kBetweenDrawings)
        return;
    drawn = now;
    isDrawn = true;
    Write(kToStartOfEmptyLine + ProgressText(done, known, std::chrono::duration<double>(now - start).count()));
}

void Progress::Erase()
{
    const std::lock_guard lock(mutex);
    EraseLocked();
}

void Progress::EraseLocked()
{
    if (isDrawn)
        Write(kToStartOfEmptyLine);
    isDrawn = false;
}

// In one write, so that lines of other programs do not come in between. There is nowhere to report a failure.
void Progress::Write(const std::string& text)
{
    if (::write(descriptor, text.data(), text.size()) < 0)
        return;
}

} // namespace cplustags
