// One run of the command lines that make a tags file, with nothing lost and nothing written through.
#pragma once

#include "wren/core/ProcessGroup.h"
#include "wren/core/TagsLine.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace wren {

class DirectoryLock;
class TagsTarget;

// What came of it.
struct TagsOutcome {
    enum class Kind {
        Made,        // a new file is in place
        Failed,      // a line failed, or what it made cannot be used
        Refused,     // nothing was run: something stands in the way
        Interrupted, // it was stopped
    };
    struct Line {
        std::string text;
        std::optional<int> status; // as a shell's $?; nothing when it was not run
    };

    Kind kind = Kind::Failed;
    std::string file;
    std::string problem; // why it was not made, in words for the user
    bool hadFile = false;
    bool isNew = false; // a new file is in place, however the rest went
    std::vector<Line> lines;
};

// Holds the directory's lock from its first line to its end. The lines run in a session of their own without input;
// after one that failed no other runs. A temporary file is made by this run or not used: what a failed line was to
// prepare, a list of files that was cut short, and what stood there before are not moved. The move is a rename, and is
// done here.
//
// All but Stop() on one thread.
class TagsRun {
public:
    // 'output' is a descriptor for what the lines print, open as long as this lives. 'waits' is called when another
    // program makes tags in that directory, with the directory.
    TagsRun(const TagsLine& first, int output, std::function<void(const std::string&)> waits);
    ~TagsRun();
    TagsRun(const TagsRun&) = delete;
    TagsRun& operator=(const TagsRun&) = delete;

    // Runs a line; returns what system() would. The one that moves ends the run.
    int Take(const TagsLine& line, const std::string& command);
    void Stop(int signal); // passes the signal on; a further call kills. Any thread.

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
    std::unique_ptr<DirectoryLock> lock;
    std::unique_ptr<TagsTarget> target;
    bool begun = false; // what stands at the unfinished file's name is this run's
    TagsOutcome outcome;
};

} // namespace wren
