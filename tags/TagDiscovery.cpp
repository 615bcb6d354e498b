#include "tags/TagDiscovery.h"

#include "tags/TargetDirectory.h"
#include "vetch/storage/BDirectory.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/Home.h"
#include "vetch/support/ShellEscape.h"

#include <cstdio>
#include <cstring>
#include <string>

bool FindTags(BEntry* entry)
{
    for (;;) {
        const BDirectory directory(entry);
        if (directory.InitCheck() != B_OK)
            break;
        // Anything called "tags" ends the walk, even a directory, which then hides the file above it and reads as a
        // tags file without tags. Links are not followed: the tags file's paths are relative to the link's directory.
        BEntry found;
        if (directory.FindEntry("tags", &found) == B_OK) {
            *entry = found;
            return true;
        }
        if (directory.IsRootDirectory() || entry->GetParent(entry) != B_OK)
            break;
    }
    entry->Unset();
    return false;
}

bool FindSystemTags(BEntry* entry)
{
    const std::string home = Home();
    if (home.empty()) {
        // Not an error, so not on standard error: lookups continue with local tags alone. In a terminal the user sees
        // it.
        std::fputs("No $HOME!", stdout);
        return false;
    }
    std::string path = "~/Library/Caches/SystemHeaderTags";
    ReplaceFirst(path, "~/", (home + "/").c_str());
    return FindSystemTags(entry, path.c_str());
}

bool FindSystemTags(BEntry* entry, const char* path)
{
    entry->SetTo(path, true);
    return entry->Exists();
}

bool FindTags(PluginInterface* host, BEntry& localTags, BEntry& systemTags)
{
    const bool hasSystem = FindSystemTags(&systemTags);
    GetTargetParentDir(host, localTags);
    const bool hasLocal = FindTags(&localTags);
    return hasLocal || hasSystem;
}

bool FindTags(const char* directory, BEntry& localTags, BEntry& systemTags)
{
    const bool hasSystem = FindSystemTags(&systemTags);
    localTags.SetTo(directory, true);
    const bool hasLocal = FindTags(&localTags);
    return hasLocal || hasSystem;
}

bool PathEndsWith(const char* path, int pathLength, const char* suffix, int suffixLength)
{
    if (pathLength < suffixLength)
        return false;
    const char* end = path + pathLength - suffixLength;
    return std::strcmp(end, suffix) == 0 && (end == path || end[-1] == '/');
}

bool MatchesPath(const char* path, int pathLength, const char* pattern, int patternLength)
{
    if (pathLength < patternLength)
        return false;
    if (PathEndsWith(path, pathLength, pattern, patternLength))
        return true;

    // Headers of a framework lie deeper than their include names: "AppKit/NSView.h" is
    // ".../AppKit.framework/Headers/NSView.h". There are no headers in folders below those.
    const char* slash = std::strchr(pattern, '/');
    if (slash == nullptr || slash[1] == '\0' || std::strchr(slash + 1, '/') != nullptr)
        return false;
    const int headerLength = static_cast<int>(pattern + patternLength - (slash + 1));
    if (!PathEndsWith(path, pathLength, slash + 1, headerLength))
        return false;
    std::string framework = "/";
    framework.append(pattern, slash).append(".framework/");
    return std::strstr(path, framework.c_str()) != nullptr;
}
