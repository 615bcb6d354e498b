// The tags files that serve a place, searched without an editor.
#pragma once

#include "vetch/storage/BEntry.h"

#include <string>

namespace CLI {
class App;
}

namespace wren {

// Common options of the commands that search tags.
struct TagsOptions {
    std::string bundle;     // "" for the default one
    std::string home;       // "" for the environment's
    std::string systemTags; // "" for the one in the home directory
};

// Adds these options to a command. 'options' outlives the parsing.
void AddTagsOptions(CLI::App& command, TagsOptions& options);

// Finds the files by the plug-in's rules; an option can name another system tags file. Warns on standard error about
// each file that a search does not read. One in a process; one thread.
class ServingTags {
public:
    ServingTags();
    ~ServingTags();
    ServingTags(const ServingTags&) = delete;
    ServingTags& operator=(const ServingTags&) = delete;

    // Sets the home directory and makes the directory for the system's tags, as an editor does at its start. False,
    // with the reason in '*error', when a named system tags file or bundle cannot be used.
    bool Prepare(const TagsOptions& options, std::string* error);

    // Finds both files, the local one at 'directory' or above it; false when neither exists.
    bool FindFrom(const BEntry& directory);
    const BEntry* Local() const { return &local; }   // unset without a local file
    const BEntry* System() const { return &system; } // may name a missing file

    // The directory that lists show as "~/". Empty when a system tags file was named: every user then gets the same
    // answer.
    std::string ShownHome() const;

private:
    std::string systemFile; // "" for the user's own
    BEntry local;
    BEntry system;
};

} // namespace wren
