// Tells whether two snapshots have the same files.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace symbols {

// What was found out about the files of one snapshot holds for others with an equal key. It keeps no part of a snapshot
// alive.
class FilesKey {
public:
    // A part of an index that never changes, and the number of its first file.
    void AddPart(const std::shared_ptr<const void>& part, std::uint32_t first) { parts.push_back({part, first}); }
    void AddOpenText(std::string_view path, const std::shared_ptr<const void>& content)
    {
        open.emplace_back(path);
        contents.emplace_back(content);
    }

    // The same files that are not open, under the same numbers and with the same content, apart from those that an open
    // text hides in one of them.
    bool HasSameIndex(const FilesKey& other) const;
    const std::vector<std::string>& OpenTexts() const { return open; } // their paths, in the order of their numbers

    // The same files under the same numbers; only the content of the open texts may differ.
    bool operator==(const FilesKey& other) const { return open == other.open && HasSameIndex(other); }
    // The same, and the same open texts but for this one.
    bool HasSameTexts(const FilesKey& other, std::string_view except) const;

private:
    struct Part {
        std::weak_ptr<const void> indexed;
        std::uint32_t first;
    };
    std::vector<Part> parts;
    std::vector<std::string> open;
    std::vector<std::weak_ptr<const void>> contents; // of the open texts
};

} // namespace symbols
