#include "symbols/update/GitIndex.h"

#include "symbols/update/ReadSmallFile.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace symbols {

namespace {

constexpr size_t kMostOfIndex = size_t(1) << 28; // several times that of the largest known trees
constexpr size_t kHeader = 12;
constexpr size_t kStatus = 40; // what lstat() said about the file
constexpr size_t kLongestName = 4096;
constexpr unsigned kIsExtended = 0x4000;

std::uint32_t Number(std::string_view text, size_t at)
{
    std::uint32_t number = 0;
    for (size_t each = 0; each < 4; ++each)
        number = number << 8 | static_cast<unsigned char>(text[at + each]);
    return number;
}

// The entries of an index file, one after the other.
class Entries {
public:
    Entries(std::string_view text, size_t hashLength) : text(text), hashLength(hashLength)
    {
        if (text.size() < kHeader + hashLength || !text.starts_with("DIRC"))
            return;
        version = Number(text, 4);
        left = version >= 2 && version <= 4 ? Number(text, 8) : 0;
        this->text.remove_suffix(hashLength); // of the whole file
    }

    // Nullptr at the end, or where the file is damaged.
    const std::string* Next()
    {
        const size_t flags = at + kStatus + hashLength;
        if (left == 0 || flags + 2 > text.size())
            return nullptr;
        --left;
        const bool isExtended = version > 2 && ((static_cast<unsigned char>(text[flags]) << 8) & kIsExtended) != 0;
        const size_t start = flags + (isExtended ? 4 : 2);
        const bool isRead = version == 4 ? ReadCompressedName(start) : ReadName(start);
        return isRead && name.size() <= kLongestName ? &name : nullptr;
    }

    std::string_view Rest() const { return left == 0 ? text.substr(std::min(at, text.size())) : ""; }

private:
    bool ReadName(size_t start)
    {
        const size_t end = text.find('\0', std::min(start, text.size()));
        if (end == std::string_view::npos)
            return false;
        name = text.substr(start, end - start);
        at += (end - at + 8) / 8 * 8; // one to eight zeros
        return true;
    }

    // The number of bytes to remove from the name before it, and what follows then.
    bool ReadCompressedName(size_t start)
    {
        size_t removed = 0;
        for (bool goesOn = true, isFirst = true; goesOn; isFirst = false) {
            if (start >= text.size() || removed > kLongestName)
                return false;
            const auto byte = static_cast<unsigned char>(text[start++]);
            removed = ((isFirst ? 0 : removed + 1) << 7) | (byte & 0x7f);
            goesOn = (byte & 0x80) != 0;
        }
        const size_t end = text.find('\0', std::min(start, text.size()));
        if (end == std::string_view::npos || removed > name.size())
            return false;
        name.resize(name.size() - removed);
        name += text.substr(start, end - start);
        at = end + 1;
        return true;
    }

    std::string_view text;
    const size_t hashLength;
    size_t at = kHeader;
    std::uint32_t version = 0;
    std::uint32_t left = 0;
    std::string name;
};

// The name of the shared index file that an extension refers to.
std::optional<std::string> SharedIndex(std::string_view extensions, size_t hashLength)
{
    constexpr char kDigits[] = "0123456789abcdef";
    while (extensions.size() >= 8) {
        const std::string_view name = extensions.substr(0, 4);
        const size_t length = Number(extensions, 4);
        extensions.remove_prefix(8);
        if (length > extensions.size())
            return std::nullopt;
        if (name == "link" && length >= hashLength) {
            std::string file = "sharedindex.";
            for (const char byte : extensions.substr(0, hashLength))
                for (const int shift : {4, 0})
                    file += kDigits[(static_cast<unsigned char>(byte) >> shift) & 0xf];
            return file;
        }
        extensions.remove_prefix(length);
    }
    return std::nullopt;
}

} // namespace

GitIndex::GitIndex(const std::string& gitDirectory, size_t hashLength) : hashLength(hashLength)
{
    Read(gitDirectory, "index", false);
    if (!std::ranges::is_sorted(names))
        std::ranges::sort(names);
}

void GitIndex::Read(const std::string& gitDirectory, const std::string& file, bool isShared)
{
    const std::optional<std::string> text = ReadSmallFile(gitDirectory + "/" + file, Links::Follow, kMostOfIndex);
    if (!text)
        return;
    Entries entries(*text, hashLength);
    while (const std::string* name = entries.Next())
        if (names.empty() || names.back() != *name) // conflicts have several entries
            names.push_back(*name);
    if (isShared)
        return;
    if (const std::optional<std::string> shared = SharedIndex(entries.Rest(), hashLength))
        Read(gitDirectory, *shared, true);
}

bool GitIndex::Tracks(std::string_view path) const
{
    return std::ranges::binary_search(names, path);
}

bool GitIndex::TracksBelow(std::string_view directory) const
{
    const std::string below = std::string(directory) + "/";
    const auto first = std::ranges::lower_bound(names, below);
    return (first != names.end() && first->starts_with(below)) || Tracks(directory);
}

} // namespace symbols
