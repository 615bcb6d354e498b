// The content of an immutable file, mapped or in memory.
#pragma once

#include "base/Result.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace symbols {

// Small files are read and large ones mapped. Movable; not thread-safe, but the bytes may be read on any thread.
class FileBytes {
public:
    // Fails with ENOENT when there is none, and when it does not have this size.
    static base::Result<FileBytes> Open(const std::string& path, std::uint64_t size);
    explicit FileBytes(std::string content) : content(std::move(content)) {}

    FileBytes(FileBytes&& other) noexcept;
    FileBytes& operator=(FileBytes&&) = delete;
    ~FileBytes();

    std::string_view All() const { return mapped.empty() ? content : mapped; }

private:
    std::string content;
    std::string_view mapped;
};

// The first bytes of a file; fails when there are fewer.
base::Result<std::string> ReadWhole(int file, size_t size);

} // namespace symbols
