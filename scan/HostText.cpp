#include "scan/HostText.h"

#include "plugin/PluginInterface.h"

namespace scan {

char HostText::At(long offset) const
{
    return host->CharAt(offset);
}

long HostText::Length() const
{
    return host->TextLength();
}

std::string HostText::Range(long start, long end) const
{
    std::string text(static_cast<size_t>(end - start), '\0');
    host->GetText(text.data(), start, end - start);
    return text;
}

long HostText::LineAt(long offset) const
{
    return host->LineAt(offset);
}

} // namespace scan
