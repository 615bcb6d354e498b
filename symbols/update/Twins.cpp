#include "symbols/update/Twins.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <utility>

namespace symbols {

namespace {

using Key = std::pair<std::uint64_t, std::uint64_t>; // device and inode

struct HashOfKey {
    size_t operator()(const Key& key) const { return key.second * 0x9e3779b97f4a7c15u ^ key.first; }
};

Key KeyOf(const FoundFile& file)
{
    return {file.device, file.stamp.inode};
}

} // namespace

std::set<std::string> RemoveTwins(std::vector<FoundFile>& files)
{
    std::unordered_map<Key, std::vector<size_t>, HashOfKey> groups;
    for (const FoundFile& file : files)
        if (file.isLink || file.hasHardLinks)
            groups[KeyOf(file)];
    if (groups.empty())
        return {};
    for (size_t i = 0; i < files.size(); ++i)
        if (const auto group = groups.find(KeyOf(files[i])); group != groups.end())
            group->second.push_back(i);
    std::set<std::string> twins;
    std::vector<bool> removed(files.size());
    for (const auto& [key, members] : groups) {
        if (members.size() == 1)
            continue;
        const auto real = std::ranges::find_if(members, [&](size_t each) { return !files[each].isLink; });
        const size_t kept = real != members.end() ? *real : members.front();
        for (const size_t each : members) {
            twins.insert(files[each].path);
            removed[each] = each != kept;
        }
    }
    size_t next = 0;
    std::erase_if(files, [&](const FoundFile&) { return removed[next++]; });
    return twins;
}

} // namespace symbols
