// Combines any number of observers, also none.
#pragma once

#include "wren/core/HostObserver.h"

#include <vector>

namespace wren {

// Each gets every change, in the given order. Borrowed.
class HostObservers final : public HostObserver {
public:
    explicit HostObservers(std::vector<HostObserver*> all = {});

    void Changed(const HostChange& change) override;

private:
    const std::vector<HostObserver*> all;
};

} // namespace wren
