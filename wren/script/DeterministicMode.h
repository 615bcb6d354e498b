// A mode in which a session gives the same answers every time.
#pragma once

namespace wren {

// While one lives, the clock is a virtual one and loopers take turns. Made before the first looper runs.
class DeterministicMode {
public:
    DeterministicMode();
    ~DeterministicMode();
    DeterministicMode(const DeterministicMode&) = delete;
    DeterministicMode& operator=(const DeterministicMode&) = delete;
};

} // namespace wren
