#include "scan/DocumentText.h"

#include "plugin/PluginInterface.h"

namespace scan {

bool IsScannable(PluginInterface* pi, long selStart, long selEnd)
{
    constexpr long kLongestSelection = 1024;
    return pi->LineAt(selStart) == pi->LineAt(selEnd) && selEnd - selStart <= kLongestSelection;
}

std::string TextBetween(PluginInterface* pi, long start, long end)
{
    std::string text(static_cast<size_t>(end - start), '\0');
    pi->GetText(text.data(), start, end - start);
    return text;
}

} // namespace scan
