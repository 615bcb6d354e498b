#include "generate/TagTemplates.h"

#include "plugin/PluginInterface.h"
#include "settings/DeclarationSettings.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/BPath.h"
#include "vetch/storage/Bundle.h"
#include "vetch/support/ShellEscape.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sys/stat.h>

namespace {

constexpr char kSystemDestination[] = "$(SYSTEM_TAGS_DESTINATION)";
constexpr char kLocalDestination[] = "$(LOCAL_TAGS_DESTINATION)";
constexpr char kProgram[] = "$(CTAGS_TO_RUN)";

struct Release {
    void operator()(const void* object) const { CFRelease(object); }
};
template <class Ref>
using Owned = std::unique_ptr<std::remove_pointer_t<Ref>, Release>;

// A blank, then one clause per pattern. The first clause is always there: leading blanks, or no suffixes at all, give a
// pattern that matches no file. An omission must not mean "every file".
std::string WildcardClauses(const std::string& suffixes)
{
    std::string clauses = " ";
    size_t start = 0;
    do {
        const size_t end = std::min(suffixes.find(' ', start), suffixes.size());
        if (start > 0)
            clauses += " -o";
        clauses += " -name \"" + suffixes.substr(start, end - start) + '"';
        start = suffixes.find_first_not_of(' ', end);
    } while (start != std::string::npos);
    return clauses;
}

// A developer's tags program; a path without a file is ignored.
const char* ProgramOfEnvironment()
{
    const char* path = std::getenv("WREN_CTAGS");
    struct stat status;
    return path != nullptr && ::stat(path, &status) == 0 ? path : nullptr;
}

void InsertSettings(PluginInterface* host, std::string& text)
{
    const DeclarationSettings& settings = *DeclarationSettings::Instance();
    ReplaceAll(text, "$(EXCLUDE_GCC)", NeedGCCIncludes(host) ? " -and ! ( -path $(GCC_EXCLUDE_DIRECTORY) ) " : "");
    ReplaceAll(text, "$(SYSTEM_HEADERS_WHERE)", settings.ScanSystemDirectories());
    ReplaceAll(text, "$(IGNORE_STRINGS)", settings.IgnoreStrings());
    ReplaceAll(text, "$(FILES_TO_INDEX_WILDCARDS)", WildcardClauses(settings.IndexSuffixes()).c_str());
}

void InsertProgram(PluginInterface* host, bool installed, std::string& text)
{
    if (const char* path = ProgramOfEnvironment())
        ReplaceAllWithPath(text, kProgram, path);
    else if (installed)
        ReplaceAllWithPath(text, kProgram, "cplustags");
    else
        ReplaceAll(text, kProgram, CTagsInWrenPath(host).c_str());
}

} // namespace

// EscapedPath puts a backslash before each '$', so an inserted path does not contain placeholders.
std::string ReplaceAllWithPath(std::string& text, const char* placeholder, const char* path)
{
    ReplaceAll(text, placeholder, EscapedPath(path).c_str());
    return text;
}

// Any text with these characters counts, "/opt/usr/include-old" too: this does not split it into directories.
bool NeedGCCIncludes(PluginInterface*)
{
    return std::strstr(DeclarationSettings::Instance()->ScanSystemDirectories(), "/usr/include") != nullptr;
}

const char* SecondSystemTemplate(PluginInterface* host)
{
    return NeedGCCIncludes(host) ? kIncludeSpecificCompiler : nullptr;
}

std::string CTagsInWrenPath(PluginInterface* host)
{
    const Owned<CFURLRef> resources(CFBundleCopyResourcesDirectoryURL(host->bundle));
    const Owned<CFURLRef> absolute(CFURLCopyAbsoluteURL(resources.get()));
    const Owned<CFStringRef> path(CFURLCopyFileSystemPath(absolute.get(), kCFURLPOSIXPathStyle));
    return path == nullptr ? "" : EscapedPath(FromCFString(path.get()) + "/cplustags");
}

void BuildTagTmpLocationString(PluginInterface*, const char* localTemp, std::string& text)
{
    ReplaceAllWithPath(text, kSystemDestination, kSystemTagsTemporary);
    ReplaceAllWithPath(text, kLocalDestination, localTemp);
}

// Order matters: placeholders in the settings are filled in, so settings come first. The parentheses of the whole text,
// those of 'find', are escaped once it is complete.
void BuildTagString(PluginInterface* host, const BEntry& directory, bool installed, std::string& text)
{
    InsertSettings(host, text);
    ReplaceAllWithPath(text, kSystemDestination, kSystemTags);
    // Relative to the shell that it is pasted into, whose directory may differ from the indexed one.
    ReplaceAll(text, kLocalDestination, "./tags");
    ReplaceAllWithPath(text, "$(LOCAL_HEADERS_WHERE)", BPath(&directory).Path());
    ReplaceAllWithPath(text, "$(GCC_EXCLUDE_DIRECTORY)", "/usr/include/gcc/darwin*"); // for 'find' to match
    ReplaceAllWithPath(text, "$(GCC_INCLUDE_DIRECTORY)", "/usr/include/gcc/darwin/default/");
    InsertProgram(host, installed, text);
    ShellEscapeString(text);
}
