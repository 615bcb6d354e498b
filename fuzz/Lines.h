// Splits a fuzzer's bytes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// The pieces between the delimiters, without an empty last one.
inline std::vector<std::string> Split(const std::uint8_t* data, std::size_t size, char delimiter)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::vector<std::string> pieces;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find(delimiter, start), text.size());
        pieces.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return pieces;
}

inline std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}
