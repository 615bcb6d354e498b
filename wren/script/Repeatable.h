// Sessions that go the same way every time.
#pragma once

namespace wren {

// For as long as it lives the clock is a virtual one and loopers take turns. Made before the first looper runs.
class Repeatable {
public:
    Repeatable();
    ~Repeatable();
    Repeatable(const Repeatable&) = delete;
    Repeatable& operator=(const Repeatable&) = delete;
};

} // namespace wren
