// Several observers, or none, in place of one.
#pragma once

#include "wren/core/HostObserver.h"

#include <vector>

namespace wren {

// They see each change in the order in which they are given. Borrowed.
class HostObservers final : public HostObserver {
public:
    explicit HostObservers(std::vector<HostObserver*> all = {});

    void Changed(const HostChange& change) override;

private:
    const std::vector<HostObserver*> all;
};

} // namespace wren
