// The steps by which a text gets to the disk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unistd.h>

namespace wren {

// A kill may come between any two steps; tests stop there. At most 'mostBytes' are written by one step.
struct DiskSteps {
    std::function<void()> before; // each step; null for nothing
    size_t mostBytes = SIZE_MAX;

    void Next() const
    {
        if (before)
            before();
    }
};

std::string DirectoryOf(const std::string& path); // with its "/", or "."

// Afterwards the text is on the disk. 0, or what errno says of the failure.
int WriteAll(int file, std::string_view text, const DiskSteps& steps);

void SyncDirectory(const std::string& directory); // the names in it are on the disk afterwards

} // namespace wren
