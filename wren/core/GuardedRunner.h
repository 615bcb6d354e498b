// Runs the plug-in's command lines for it, so that a hostile tree gains nothing by them and a failure costs nothing.
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

// Tags that are out of date and were not rebuilt by themselves.
struct StaleTags {
    std::string file;
    std::string newer;              // the source that was found to be newer
    std::string why;                // they were not rebuilt, as the end of a sentence ("since ...")
    std::vector<std::string> lines; // what rebuilds them
};

// While it lives, it takes in every command line of the plug-in; one at a time in a process. Make it before the bundle
// is loaded. After it is gone, lines are refused until somebody sets another runner.
//
// One run a tags file at a time: a request for a file that is being made joins the run under way, which is all that
// becomes of it. What nobody asked for is only run where UnaskedRebuilds allows it.
class GuardedRunner {
public:
    // Called on the threads of the runs, with no lock held. Any may be missing.
    struct News {
        std::function<void()> changed;                           // a run has begun or ended
        std::function<void(const std::string& directory)> waits; // for another program that makes tags there
        std::function<void(const std::string& line)> runs;       // that line, now
        std::function<void(const TagsOutcome& outcome)> ended;
        std::function<void(const StaleTags& stale)> stale;
    };

    // What the lines print goes to 'output', a descriptor that stays open as long as this lives.
    GuardedRunner(int output, News news);
    ~GuardedRunner(); // stops what runs, and waits for it
    GuardedRunner(const GuardedRunner&) = delete;
    GuardedRunner& operator=(const GuardedRunner&) = delete;

    // The user wants them rebuilt after all: on a thread of its own. False when the system has none to give,
    // which vetch::Complain() has reported.
    bool Rebuild(const StaleTags& stale);

    // All of these: any thread.
    std::vector<std::string> Running() const; // the files that are being made
    void Stop(int signal);                    // passes it on to what runs; a further call kills. No later run begins
    void StopAndWait(int signal);             // for some seconds at most: what has not ended after two is killed
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
    void Tell(const std::function<void()>& news) const;

    const int output;
    const News news;
    UnaskedRebuilds unasked;
    mutable std::mutex mutex; // guards what follows; a request is its own thread's, but for stopping its run
    mutable std::condition_variable calmed;
    std::map<const vetch::ShellRequest*, std::unique_ptr<Request>> requests;
    int stopped = 0;
    int calls = 0; // of the plug-in's threads and those of Rebuild(), that are in here
};

} // namespace wren
