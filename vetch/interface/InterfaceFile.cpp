#include "vetch/interface/InterfaceFile.h"

#include "vetch/interface/InterfaceFileReader.h"
#include "vetch/interface/NibControls.h"
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

std::optional<NibPart> ReadInterfaceFile(const std::string& path, const std::string& part)
{
    return InterfaceFileReader(path).Read(part);
}

std::optional<NibPart> ReadNibPart(const __CFBundle* bundle, const char* nib, const char* part)
{
    const std::string path = InterfaceFilePath(bundle, nib);
    return path.empty() || part == nullptr ? std::nullopt : ReadInterfaceFile(path, part);
}

BView* MakeViewFromNib(__CFBundle* bundle, const char* nib, const char* part)
{
    const NibPart read = ReadNibPart(bundle, nib, part).value_or(NibPart());
    auto* view = new BView({0, 0, read.frame.Width(), read.frame.Height()}, part, 0, 0);
    NibControls::Lay(*view, read);
    return view;
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
