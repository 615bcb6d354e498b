// The tags files that serve a place, asked without an editor.
#pragma once

#include "vetch/storage/BEntry.h"

#include <string>

namespace CLI {
class App;
}

namespace wren {

// What a command works with beside its question.
struct TagsOptions {
    std::string bundle;     // "" for the default one
    std::string home;       // "" for the environment's
    std::string systemTags; // "" for the one in the home directory
};

// Adds the options of that to a command. 'options' outlives the parsing.
void AddTagsOptions(CLI::App& command, TagsOptions& options);

// Finds them by the rules of the plug-in, with another system tags file where one is named. Warns on standard error of
// each file that a search does not read. One in a process; one thread.
class ServingTags {
public:
    ServingTags();
    ~ServingTags();
    ServingTags(const ServingTags&) = delete;
    ServingTags& operator=(const ServingTags&) = delete;

    // Takes the home directory and makes the place for the system's tags in it, as an editor does that starts. False,
    // with the reason in '*error', when a system tags file or a bundle that was named cannot be used.
    bool Prepare(const TagsOptions& options, std::string* error);

    // Finds both files, the local one at 'directory' or above it; false when there is neither.
    bool FindFrom(const BEntry& directory);
    const BEntry* Local() const { return &local; }   // unset when there is none
    const BEntry* System() const { return &system; } // may name a file that is not there

    // The directory that lists show as "~/". None with a system tags file that was named: the answer is then the same
    // whoever asks.
    std::string ShownHome() const;

private:
    std::string systemFile; // "" for the user's own
    BEntry local;
    BEntry system;
};

} // namespace wren
