// Tags files, made by the plug-in as an editor would ask it to.
#pragma once

#include "wren/cli/ShellCommands.h"
#include "wren/cli/TagsCount.h"

#include <memory>
#include <string>
#include <vector>

namespace wren {

class Interruption;
class PluginBundle;

// What came of one tags file.
struct MadeTags {
    enum class Outcome {
        Made,        // a new file is in place
        Kept,        // the commands were not to be run
        Failed,      // see 'problem', else 'commands'
        Interrupted, // by 'signal'
    };

    Outcome outcome = Outcome::Failed;
    std::string file;
    std::string problem;  // why nothing was tried
    bool isNew = false;   // a new file is in place, however the rest went
    bool hadFile = false; // one was there before
    double seconds = 0;
    TagsCount count;
    int signal = 0;
    std::vector<ShellCommands::Command> commands; // those of the plug-in, in its order
};

// A host for one use of the program: makes the application and its display, so once in a process. HOME is where system
// tags go. What the plug-in prints goes to standard output.
class TagsMaker {
public:
    // Runs the commands in 'interruption', which is made before this; null: only keeps them, and touches nothing.
    // 'settings' is the file of stored settings, "" for none. Borrows both objects.
    TagsMaker(PluginBundle& bundle, Interruption* interruption, const std::string& settings);
    ~TagsMaker();

    // Each waits until all is done, and holds no signals then. 'directory' is absolute and exists.
    MadeTags MakeLocal(const std::string& directory);
    MadeTags MakeSystem();

private:
    class Session;

    std::unique_ptr<Session> session;
};

} // namespace wren
