// Shows the progress of the work to the user, on standard error.
#pragma once

#include "tagging/Observer.h"

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>

namespace cplustags {

// On a terminal, a line shows the progress, with messages above it; otherwise there are only messages. Any thread.
class Progress final : public tagging::Observer {
public:
    explicit Progress(int descriptor);
    ~Progress() override; // erases the line

    void Say(const std::string& message) override; // prefixes it with "cplustags: "

    // Redraws the line when it is due. 'known' is the number of files known so far.
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
