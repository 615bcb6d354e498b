// What a person at the terminal sees of the work, on standard error.
#pragma once

#include "tagging/Observer.h"

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>

namespace cplustags {

// On a terminal there is a line that says how far the work is, and messages go above it; without one there are only
// messages. Any thread.
class Progress final : public tagging::Observer {
public:
    explicit Progress(int descriptor);
    ~Progress() override; // erases the line

    void Say(const std::string& message) override; // "cplustags: " is put before it

    // Draws the line when it is time for it. 'known' is what is known so far of how many files there are.
    void Show(size_t done, size_t known) override;
    void Erase();

private:
    using Clock = std::chrono::steady_clock;

    void EraseLocked();
    void Write(const std::string& text);

    const int descriptor;
    const bool isTerminal;
    const Clock::time_point start = Clock::now();
    std::mutex mutex;
    Clock::time_point drawn;
    bool isDrawn = false;
};

// "3 of 20 files, 15 files/s"
std::string ProgressText(size_t done, size_t known, double seconds);

} // namespace cplustags
