// Records the plug-in's command lines instead of running them.
#pragma once

#include "vetch/support/ShellCommand.h"

#include <mutex>
#include <string>
#include <vector>

namespace wren {

// While one lives, it receives every command line of the plug-in. At most one at a time.
class RecordedCommands {
public:
    RecordedCommands();
    ~RecordedCommands(); // no line may be in progress
    RecordedCommands(const RecordedCommands&) = delete;
    RecordedCommands& operator=(const RecordedCommands&) = delete;

    std::vector<std::string> All() const; // so far, in order. Any thread.

private:
    static int Record(const char* command, const vetch::ShellRequest& request);

    mutable std::mutex mutex;
    std::vector<std::string> commands;
};

} // namespace wren
