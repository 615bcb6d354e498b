// Makes tags files through the plug-in, in the same way as an editor.
#pragma once

#include "wren/core/TagsCount.h"
#include "wren/core/TagsRun.h"

#include <functional>
#include <memory>
#include <string>

namespace wren {

class Interruption;
class PluginBundle;

// The result for one tags file.
struct MadeTags {
    TagsOutcome run;   // with its file; Failed with a problem when nothing was tried
    bool kept = false; // a dry run: 'run' has the lines
    double seconds = 0;
    TagsCount count; // set when a file was made
    int signal = 0;  // the signal that interrupted it, or 0
};

// A host for one run of the program: makes the application and its display, so only one in a process. System tags go to
// HOME. The plug-in prints to standard output.
class TagsMaker {
public:
    // Runs the commands, and stops them when 'interruption', which is made before this, receives a signal. Null: only
    // keeps them, and changes nothing. 'settings' is the file of stored settings, "" for none. 'runs' is called, on
    // another thread, with each line that runs; may be null. Borrows both objects.
    TagsMaker(PluginBundle& bundle, Interruption* interruption, const std::string& settings,
              std::function<void(const std::string&)> runs);
    ~TagsMaker();

    // Each waits for all work to end, and holds no signals afterwards. 'directory' is absolute and exists.
    MadeTags MakeLocal(const std::string& directory);
    MadeTags MakeSystem();
    MadeTags MakeLocalFromIndex(const std::string& directory); // or not at all

private:
    class Session;

    std::unique_ptr<Session> session;
};

} // namespace wren
