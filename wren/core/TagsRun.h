// One run of the command lines that make a tags file. It loses no tags and writes through no link.
#pragma once

#include "wren/core/ProcessGroup.h"
#include "wren/core/TagsLine.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace base {
class DirectoryLock;
}

namespace wren {

class TagsTarget;

// The result of a run.
struct TagsOutcome {
    enum class Kind {
        Made,        // a new file is in place
        Failed,      // a line failed, or its file cannot be used
        Refused,     // nothing was run: an obstacle is in the way
        Interrupted, // the run was stopped
    };
    struct Line {
        std::string text;
        std::optional<int> status; // like a shell's $?; nullopt when it was not run
    };

    Kind kind = Kind::Failed;
    std::string file;
    std::string problem; // why it was not made, for the user
    bool hadFile = false;
    bool isNew = false; // a new file is in place, even if a later step failed
    std::vector<Line> lines;
};

// Holds the directory's lock from its first line to its end. The lines run in a separate session without input; after a
// failed line no other runs. The temporary file is used only if this run made it: a failed line's file, a file from an
// incomplete list, and an earlier run's file are not moved into place. The move is a rename, done here.
//
// One thread, except for Stop().
class TagsRun {
public:
    // The lines print to the descriptor 'output', which is open as long as this lives. 'waits' is called with the
    // directory when another program makes tags in it.
    TagsRun(const TagsLine& first, int output, std::function<void(const std::string&)> waits);
    ~TagsRun();
    TagsRun(const TagsRun&) = delete;
    TagsRun& operator=(const TagsRun&) = delete;

    // Runs a line; returns the result of system(). The line that moves ends the run.
    int Take(const TagsLine& line, const std::string& command);
    void Stop(int signal); // passes the signal on; a second call kills. Any thread.

    const TagsOutcome& Outcome() const { return outcome; } // after the line that moves

private:
    void Begin();
    void TakeLock(const std::string& directory);
    std::string WhyNotToBegin() const;
    int Run(const TagsLine& line, const std::string& command);
    int RunWatched(const std::string& command);
    void CheckWhatWasMade(bool findComplained);
    int Move(const TagsLine& line);
    void End();
    void Clean();
    bool IsWell() const { return outcome.problem.empty(); }
    void Fail(const std::string& problem);

    const std::string file;
    const std::string unfinished;
    const int output;
    const std::function<void(const std::string&)> waits;
    ProcessGroup group;
    std::unique_ptr<base::DirectoryLock> lock;
    std::unique_ptr<TagsTarget> target;
    bool begun = false; // the unfinished file is this run's
    TagsOutcome outcome;
};

} // namespace wren
