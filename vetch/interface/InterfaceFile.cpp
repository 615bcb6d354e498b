#include "vetch/interface/InterfaceFile.h"

#include "vetch/storage/Bundle.h"

#include <cstdio>
#include <mutex>

namespace vetch {

namespace {

std::mutex gSinkMutex;
std::function<void(const std::string&)> gSink;

} // namespace

std::string InterfaceFilePath(const __CFBundle* bundle, const char* nib)
{
    return bundle == nullptr || nib == nullptr ? "" : bundle->path + "/Contents/Resources/" + nib + ".ui";
}

std::optional<NibPart> ReadNibPart(const __CFBundle* bundle, const char* nib, const char* part)
{
    const std::string path = InterfaceFilePath(bundle, nib);
    return path.empty() || part == nullptr ? std::nullopt : ReadInterfaceFile(path, part);
}

void ReportInterfaceProblem(const std::string& text)
{
    std::function<void(const std::string&)> sink;
    {
        const std::lock_guard lock(gSinkMutex);
        sink = gSink;
    }
    if (sink)
        sink(text);
    else
        std::fprintf(stderr, "%s\n", text.c_str());
}

void SetInterfaceProblemSink(std::function<void(const std::string&)> sink)
{
    const std::lock_guard lock(gSinkMutex);
    gSink = std::move(sink);
}

} // namespace vetch
