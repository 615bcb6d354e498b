#include "vetch/storage/Bundle.h"

#include "vetch/storage/BDirectory.h"
#include "vetch/storage/Normalise.h"

#include <atomic>

namespace {

std::atomic<long> gLiveObjects{0};

// The base of every object of the subset, for CFRelease.
class CFObject {
public:
    CFObject() { ++gLiveObjects; }
    CFObject(const CFObject&) = delete;
    CFObject& operator=(const CFObject&) = delete;
    virtual ~CFObject() { --gLiveObjects; }
};

} // namespace

struct __CFURL final : CFObject {
    explicit __CFURL(const std::string& path) : path(path) {}
    const std::string path;
};

struct __CFString final : CFObject {
    explicit __CFString(const std::string& text) : text(text) {}
    const std::string text;
};

CFURLRef CFBundleCopyResourcesDirectoryURL(__CFBundle* bundle)
{
    if (bundle == nullptr || bundle->path.empty())
        return nullptr;
    const std::string resources = bundle->path + "/Contents/Resources";
    return BDirectory(resources.c_str()).InitCheck() == B_OK ? new __CFURL(resources) : nullptr;
}

CFURLRef CFURLCopyAbsoluteURL(CFURLRef url)
{
    return url == nullptr ? nullptr : new __CFURL(vetch::NormalisedPath(url->path));
}

CFStringRef CFURLCopyFileSystemPath(CFURLRef url, long style)
{
    return url == nullptr || style != kCFURLPOSIXPathStyle ? nullptr : new __CFString(url->path);
}

void CFRelease(const void* object)
{
    delete static_cast<const CFObject*>(object);
}

std::string FromCFString(CFStringRef string)
{
    return string == nullptr ? "" : string->text;
}

long vetch::LiveCFObjects()
{
    return gLiveObjects;
}
