// Stores texts one after the other.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace base {

// Texts stay valid at the same address as long as the pool lives. Not thread-safe.
class TextPool {
public:
    std::string_view Put(std::string_view text)
    {
        char* const place = Room(text.length());
        std::copy(text.begin(), text.end(), place);
        return {place, text.length()};
    }

    // Room for a text that the caller writes.
    char* Room(size_t length)
    {
        if (length > left) {
            left = std::max(nextBlock, length);
            nextBlock = std::min(2 * nextBlock, kLargestBlock);
            blocks.push_back(std::make_unique_for_overwrite<char[]>(left));
            end = blocks.back().get();
        }
        char* const place = end;
        end += length;
        left -= length;
        return place;
    }

private:
    static constexpr size_t kLargestBlock = 256 * 1024;

    std::vector<std::unique_ptr<char[]>> blocks;
    size_t nextBlock = 4 * 1024; // many pools are small
    char* end = nullptr;
    size_t left = 0;
};

} // namespace base
