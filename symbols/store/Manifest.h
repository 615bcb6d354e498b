// Names the segments of an index that count, with what has changed in them since.
#pragma once

#include "symbols/store/Store.h"
#include "symbols/store/View.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace symbols {

struct Manifest {
    struct Entry {
        std::uint64_t id = 0;   // of the segment
        std::uint64_t size = 0; // bytes
        std::shared_ptr<const FileChanges> changes;
    };
    struct Version { // of the state; two states never have the same one
        std::uint64_t generation = 0;
        std::uint64_t random = 0; // for an index that was removed and made again
        bool operator==(const Version&) const = default;
    };
    Version version;
    bool isPart = false; // of a first state that is not complete: only its writer goes on from there
    StoreHeader header;
    std::vector<Entry> entries;

    std::string Written() const;
    static std::optional<Manifest> Read(std::string_view content); // nullopt when it is damaged or foreign

    // From the first bytes of the file, of which this many suffice.
    static constexpr size_t kHead = 32;
    static std::optional<Version> ReadVersion(std::string_view head);
};

} // namespace symbols
