// Tags files, made by the plug-in as an editor would ask it to.
#pragma once

#include "wren/core/TagsCount.h"
#include "wren/core/TagsRun.h"

#include <functional>
#include <memory>
#include <string>

namespace wren {

class Interruption;
class PluginBundle;

// What came of one tags file.
struct MadeTags {
    TagsOutcome run;   // its file; Failed with a problem when nothing was tried
    bool kept = false; // the lines were not to be run: they are in 'run'
    double seconds = 0;
    TagsCount count; // of a file that was made
    int signal = 0;  // that interrupted it
};

// A host for one use of the program: makes the application and its display, so once in a process. HOME is where system
// tags go. What the plug-in prints goes to standard output.
class TagsMaker {
public:
    // Runs the commands, and stops them when 'interruption', which is made before this, takes in a signal; null: only
    // keeps them, and touches nothing. 'settings' is the file of stored settings, "" for none. 'runs' is called, on
    // another thread, with each line that is run; may be null. Borrows both objects.
    TagsMaker(PluginBundle& bundle, Interruption* interruption, const std::string& settings,
              std::function<void(const std::string&)> runs);
    ~TagsMaker();

    // Each waits until all is done, and holds no signals then. 'directory' is absolute and exists.
    MadeTags MakeLocal(const std::string& directory);
    MadeTags MakeSystem();

private:
    class Session;

    std::unique_ptr<Session> session;
};

} // namespace wren
