// Runs the plug-in's command lines, safe against hostile trees and failed commands.
#pragma once

#include "vetch/support/ShellCommand.h"
#include "wren/core/TagsRun.h"
#include "wren/core/UnaskedRebuilds.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace wren {

// A stale tags file that was not rebuilt automatically.
struct StaleTags {
    std::string file;
    std::string newer;              // the newer source
    std::string why;                // the reason, as the end of a sentence ("since ...")
    std::vector<std::string> lines; // the commands that rebuild it
};

// While it lives, it receives every command line of the plug-in. One at a time in a process. Make it before the bundle
// is loaded. After its end, lines are refused until another runner is set.
//
// One run per tags file at a time: a request for a file that is being made joins the current run and starts none. A
// request that the user did not make runs only where UnaskedRebuilds allows it.
class GuardedRunner {
public:
    // Called on the threads of the runs, with no lock held. Each may be empty.
    struct News {
        std::function<void()> changed;                           // a run began or ended
        std::function<void(const std::string& directory)> waits; // another program makes tags there
        std::function<void(const std::string& line)> runs;       // the line starts now
        std::function<void(const TagsOutcome& outcome)> ended;
        std::function<void(const StaleTags& stale)> stale;
    };

    // The lines print to 'output', a descriptor that stays open as long as this lives.
    GuardedRunner(int output, News news);
    ~GuardedRunner(); // stops all runs and waits for them
    GuardedRunner(const GuardedRunner&) = delete;
    GuardedRunner& operator=(const GuardedRunner&) = delete;

    // Rebuilds the tags at the user's request, on a new thread. False when the system cannot start one, which
    // vetch::Complain() has reported.
    bool Rebuild(const StaleTags& stale);

    // Any thread, all of these.
    std::vector<std::string> Running() const; // the tags files being made
    void Stop(int signal);                    // passes it to all runs; a second call kills. No later run begins
    void StopRunning(int signal);             // the same, and later runs begin
    void StopAndWait(int signal);             // waits some seconds at most: kills what has not ended after two
    bool WaitUntilIdle(std::chrono::milliseconds limit) const; // false at the limit

private:
    struct Request;

    static int TakeForPlugin(const char* command, const vetch::ShellRequest& request);
    void BeginCall();
    void EndCall();
    int Take(const char* command, const vetch::ShellRequest& asked);
    Request& Find(const TagsLine& line, const vetch::ShellRequest& asked);
    void Begin(Request& request, const TagsLine& line);
    int Carry(Request& request, const TagsLine& line, const std::string& command);
    void End(Request& request, const vetch::ShellRequest& asked);
    void PassOn(int signal); // to all runs; call it with the mutex
    void Tell(const std::function<void()>& news) const;

    const int output;
    const News news;
    UnaskedRebuilds unasked;
    mutable std::mutex mutex; // guards the members below; a request belongs to its thread, except for stopping its run
    mutable std::condition_variable calmed;
    std::map<const vetch::ShellRequest*, std::unique_ptr<Request>> requests;
    int stopped = 0;
    int calls = 0; // running, by the plug-in's threads and those of Rebuild()
};

} // namespace wren
