// The steps that write a text to the disk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unistd.h>

namespace wren {

// A kill may come between any two steps; tests stop there. One step writes at most 'mostBytes'.
struct DiskSteps {
    std::function<void()> before; // called before each step; may be null
    size_t mostBytes = SIZE_MAX;

    void Next() const
    {
        if (before)
            before();
    }
};

std::string DirectoryOf(const std::string& path); // with its "/", or "."

// Writes and syncs the text. Returns 0, or the errno of the failure.
int WriteAll(int file, std::string_view text, const DiskSteps& steps);

void SyncDirectory(const std::string& directory); // syncs the names in it

} // namespace wren
