// The command lines that the plug-in wants run, kept instead of run.
#pragma once

#include "vetch/support/ShellCommand.h"

#include <mutex>
#include <string>
#include <vector>

namespace wren {

// While one lives, it takes in every command line of the plug-in. At most one at a time.
class RecordedCommands {
public:
    RecordedCommands();
    ~RecordedCommands(); // no line is under way
    RecordedCommands(const RecordedCommands&) = delete;
    RecordedCommands& operator=(const RecordedCommands&) = delete;

    std::vector<std::string> All() const; // so far, in their order. Any thread.

private:
    static int Record(const char* command, const vetch::ShellRequest& request);

    mutable std::mutex mutex;
    std::vector<std::string> commands;
};

} // namespace wren
