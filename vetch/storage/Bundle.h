// Bundle directories: the small part of Core Foundation that a plug-in needs to find its resources.
//
// Functions with "Copy" in their names return an object for the caller to release with CFRelease, and null for null.
#pragma once

#include <string>

// A bundle: a directory holding Contents/. The host owns it for as long as the plug-in is loaded.
struct __CFBundle {
    std::string path; // of the directory, absolute
};

typedef const struct __CFURL* CFURLRef;
typedef const struct __CFString* CFStringRef;

constexpr long kCFURLPOSIXPathStyle = 0;

CFURLRef CFBundleCopyResourcesDirectoryURL(__CFBundle* bundle); // null when the bundle has no Contents/Resources
CFURLRef CFURLCopyAbsoluteURL(CFURLRef url);
CFStringRef CFURLCopyFileSystemPath(CFURLRef url, long style); // null for any style but POSIX
void CFRelease(const void* object);                            // null is ignored
std::string FromCFString(CFStringRef string);                  // "" for null

namespace vetch {

// How many Core Foundation objects have not been released yet. Any thread.
long LiveCFObjects();

} // namespace vetch
