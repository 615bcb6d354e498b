// Shows the progress of work on a terminal.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <mutex>
#include <string>

namespace base {

// One line at the bottom, below all messages. Without a terminal there are only messages. Any thread.
class ProgressLine {
public:
    // Borrows the descriptor. Nothing is drawn before 'delay' has passed, since short work needs no progress.
    explicit ProgressLine(int descriptor, std::chrono::milliseconds delay = {});
    ~ProgressLine(); // erases the line
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void Say(const std::string& lines); // whole lines, with their line breaks

    // Redraws when it is due, ten times a second. 'text' gets the seconds since the construction.
    void Show(const std::function<std::string(double seconds)>& text);
    void Erase();

private:
    using Clock = std::chrono::steady_clock;

    void EraseLocked();
    void Write(const std::string& text);

    const int descriptor;
    const bool isTerminal;
    const Clock::time_point start = Clock::now();
    const Clock::time_point first; // nothing is drawn before
    std::mutex mutex;              // guards the members below
    Clock::time_point drawn;
    bool isDrawn = false;
};

// "3 of 20 files, 15 files/s"
std::string ProgressText(size_t done, size_t known, double seconds);

} // namespace base
