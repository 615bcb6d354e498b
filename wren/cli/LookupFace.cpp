#include "wren/cli/LookupFace.h"

#include <cstdio>

namespace wren {

void LookupDisplay::ListItemAdded(vetch::HandlerToken list, long index, const std::string& text)
{
    {
        const std::lock_guard guard(itemsMutex);
        if (list != lastList)
            items.clear();
        lastList = list;
        items.push_back(text);
    }
    HeadlessDisplay::ListItemAdded(list, index, text);
}

std::vector<std::string> LookupDisplay::LastItems() const
{
    const std::lock_guard guard(itemsMutex);
    return items;
}

void LookupFace::Warn(const std::string& text)
{
    std::fprintf(stderr, "wren: %s\n", text.c_str());
}

} // namespace wren
