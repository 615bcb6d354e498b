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
        if (text.length() > left) {
            left = std::max(kBlock, text.length());
            blocks.push_back(std::make_unique_for_overwrite<char[]>(left));
            end = blocks.back().get();
        }
        char* const place = end;
        std::copy(text.begin(), text.end(), place);
        end += text.length();
        left -= text.length();
        return {place, text.length()};
    }

private:
    static constexpr size_t kBlock = 256 * 1024;

    std::vector<std::unique_ptr<char[]>> blocks;
    char* end = nullptr;
    size_t left = 0;
};

} // namespace base
