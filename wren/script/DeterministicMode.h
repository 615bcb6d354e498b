// A mode in which a session gives the same answers on every run.
#pragma once

namespace wren {

// While one lives, the clock is virtual and loopers take turns. Make it before the first looper runs.
class DeterministicMode {
public:
    DeterministicMode();
    ~DeterministicMode();
    DeterministicMode(const DeterministicMode&) = delete;
    DeterministicMode& operator=(const DeterministicMode&) = delete;
};

} // namespace wren
