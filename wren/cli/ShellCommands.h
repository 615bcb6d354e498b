// The shell commands that the plug-in wants run.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace wren {

class Interruption;

// While one lives, it takes in every command of the plug-in, runs them one at a time, or only keeps them, and knows what
// came of each. At most one at a time.
//
// Once a command has failed or was interrupted, later ones are not run. A move among them, which would put a file in place
// that nobody has finished, does no harm that way.
class ShellCommands {
public:
    struct Command {
        std::string text;
        std::optional<int> status; // as a shell's $?; nothing when it was not run
    };

    // Runs the commands in it, and holds signals; null: only keeps them. Borrowed.
    explicit ShellCommands(Interruption* interruption);
    ~ShellCommands(); // no command is under way
    ShellCommands(const ShellCommands&) = delete;
    ShellCommands& operator=(const ShellCommands&) = delete;

    // Those of which the plug-in has spoken so far, in that order. Any thread.
    std::vector<Command> All() const;

private:
    static int RunForPlugin(const char* command);
    int Take(const char* command);
    bool GoesOn() const;

    Interruption* const interruption;
    mutable std::mutex mutex; // held while a command runs
    std::vector<Command> commands;
};

// Whether the command would only append the tags of a directory that does not exist: it does nothing then, but complain.
bool AppendsNothing(const std::string& command);

} // namespace wren
