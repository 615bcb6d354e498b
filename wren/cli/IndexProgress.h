// What a user sees while an index is made or checked.
#pragma once

#include "base/ProgressLine.h"
#include "symbols/Index.h"

#include <chrono>
#include <string>

namespace wren {

// On standard error. A terminal shows the progress of work that takes long; messages appear in any case. Any thread.
class IndexProgress {
public:
    // 'what' is what takes long, for the user; "" to say nothing about it.
    explicit IndexProgress(std::string what);

    symbols::Index::Listener Listener(); // this must outlive it
    void Say(const std::string& message);

private:
    using Clock = std::chrono::steady_clock;

    void Show(const symbols::Progress& progress);

    std::string what; // "" once it has been said
    const Clock::time_point start = Clock::now();
    base::ProgressLine line;
};

} // namespace wren
