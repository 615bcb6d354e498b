// The shell command lines that make tags files, with placeholders for what settings and places fill in.
#pragma once

#include <string>

class BEntry;
class PluginInterface;

// The texts are exact, with their blanks and line breaks: users know them from their Worksheets. The first two end so
// that, pasted one after the other, they stand on one line.
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

// Without a line break at its end: each text that can follow begins with one.
inline constexpr char kInstallCtags[] =
    "\n# cplustags are not installed on your system. Execute the following line to install them:\n"
    "sudo cp $(CTAGS_TO_INSTALL) /usr/bin/cplustags ; sudo chmod +x /usr/bin/cplustags";

inline constexpr char kSystemTags[] = "~/Library/Caches/SystemHeaderTags"; // the shell expands it
inline constexpr char kSystemTagsTemporary[] = "~/Library/Caches/SystemHeaderTags.temp";

// All of these are for the document thread.

// Fills in the placeholders of a template, in place, from the settings and for tags of 'directory'. 'installed' tells
// whether the tags program is in the shell's search path; when not, the bundle's own is named. The result is for a
// shell.
//
// Paths are escaped for the shell; the texts of the settings are inserted as they stand, so that users can write there
// whatever 'find' and the shell understand.
void BuildTagString(PluginInterface* host, const BEntry& directory, bool installed, std::string& text);

// Has a template make its tags in temporary files: those of the system beside their file, local ones in 'localTemp'.
// For commands that are run, before BuildTagString().
void BuildTagTmpLocationString(PluginInterface* host, const char* localTemp, std::string& text);

// Puts the path, escaped for the shell, in place of each placeholder; answers a copy of the result.
std::string ReplaceAllWithPath(std::string& text, const char* placeholder, const char* path);

// Whether the compiler's own headers are indexed: they are when /usr/include stands anywhere among the system
// directories of the settings.
bool NeedGCCIncludes(PluginInterface* host);

// The template that completes kGenerateSystemCtags: kIncludeSpecificCompiler when it is needed, else null.
const char* SecondSystemTemplate(PluginInterface* host);

// The tags program in the bundle, escaped for the shell; "" when the bundle has no resources.
std::string CTagsInWrenPath(PluginInterface* host);
