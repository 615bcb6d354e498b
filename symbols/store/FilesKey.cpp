#include "symbols/store/FilesKey.h"

#include <algorithm>

namespace symbols {

namespace {

// By owner: another part may get the address of one that is gone, but not its owner.
bool IsSame(const std::weak_ptr<const void>& a, const std::weak_ptr<const void>& b)
{
    return !a.owner_before(b) && !b.owner_before(a);
}

} // namespace

bool FilesKey::HasSameIndex(const FilesKey& other) const
{
    return std::ranges::equal(parts, other.parts, [](const Part& a, const Part& b) {
        return IsSame(a.indexed, b.indexed) && a.first == b.first;
    });
}

bool FilesKey::HasSameTexts(const FilesKey& other, std::string_view except) const
{
    if (!(*this == other))
        return false;
    for (size_t i = 0; i < open.size(); ++i)
        if (open[i] != except && !IsSame(contents[i], other.contents[i]))
            return false;
    return true;
}

} // namespace symbols
