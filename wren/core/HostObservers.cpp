#include "wren/core/HostObservers.h"

#include <utility>

namespace wren {

HostObservers::HostObservers(std::vector<HostObserver*> all) : all(std::move(all)) {}

void HostObservers::Changed(const HostChange& change)
{
    for (HostObserver* observer : all)
        observer->Changed(change);
}

} // namespace wren
