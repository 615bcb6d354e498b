// The shell command lines that make tags files, with placeholders for what settings and places fill in.
#pragma once

class PluginInterface;

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

// Whether the compiler's own headers are indexed: they are when /usr/include stands anywhere among the system
// directories of the settings. Document thread.
bool NeedGCCIncludes(PluginInterface* pi);
