// The shell command lines that make tags files, with placeholders for settings and paths.
#pragma once

#include <string>

class BEntry;
class PluginInterface;

// The texts are exact, with blanks and line breaks: users know them from their Worksheets. The first has no line break
// at its end, so the second, pasted behind it, continues its line.
inline constexpr char kGenerateSystemCtags[] =
    "\n# Execute the following line to generate tags for the system headers:\n"
    "find $(SYSTEM_HEADERS_WHERE) ($(FILES_TO_INDEX_WILDCARDS) ) $(EXCLUDE_GCC) | $(CTAGS_TO_RUN) -I $(IGNORE_STRINGS) "
    "--c-kinds=+p --excmd=number -f $(SYSTEM_TAGS_DESTINATION) -L - ";

// Appends the compiler's own headers, which have no extension, to the tags of the command above.
inline constexpr char kIncludeSpecificCompiler[] =
    "find $(GCC_INCLUDE_DIRECTORY) | $(CTAGS_TO_RUN) -I $(IGNORE_STRINGS) --c-kinds=+p --excmd=number "
    "--language-force=\"C++\" -f $(SYSTEM_TAGS_DESTINATION) -L - --append=yes\n";

inline constexpr char kGenerateLocalCtags[] =
    "\n# Execute the following line to generate tags in this directory:\n"
    "find $(LOCAL_HEADERS_WHERE) ($(FILES_TO_INDEX_WILDCARDS) ) | $(CTAGS_TO_RUN) --c-kinds=+p --excmd=number "
    "-f $(LOCAL_TAGS_DESTINATION) -L -\n";

// No line break at its end: every text that can follow begins with one.
inline constexpr char kInstallCtags[] =
    "\n# cplustags are not installed on your system. Execute the following line to install them:\n"
    "sudo cp $(CTAGS_TO_INSTALL) /usr/bin/cplustags ; sudo chmod +x /usr/bin/cplustags";

inline constexpr char kSystemTags[] = "~/Library/Caches/SystemHeaderTags"; // the shell expands it
inline constexpr char kSystemTagsTemporary[] = "~/Library/Caches/SystemHeaderTags.temp";

// Call all of these on the document thread.

// Fills in a template's placeholders, in place, from the settings and for tags of 'directory'. 'installed': the tags
// program is in the shell's search path; otherwise the bundle's program is named. The result is for a shell.
//
// Paths are escaped for the shell. Settings are inserted unchanged, so that users can write anything there that 'find'
// and the shell understand.
void BuildTagString(PluginInterface* host, const BEntry& directory, bool installed, std::string& text);

// Redirects a template to temporary files: the system's beside their file, local ones to 'localTemp'. For commands that
// will run, before BuildTagString().
void BuildTagTmpLocationString(PluginInterface* host, const char* localTemp, std::string& text);

// Replaces each placeholder with the path, escaped for the shell; returns a copy of the result.
std::string ReplaceAllWithPath(std::string& text, const char* placeholder, const char* path);

// Whether to index the compiler's own headers: true when /usr/include occurs anywhere in the settings' system
// directories.
bool NeedGCCIncludes(PluginInterface* host);

// The template that completes kGenerateSystemCtags: kIncludeSpecificCompiler, or null when it is not needed.
const char* SecondSystemTemplate(PluginInterface* host);

// The bundle's tags program, escaped for the shell; "" when the bundle has no resources.
std::string CTagsInWrenPath(PluginInterface* host);
