// A ctags process that reads file names and writes their tags, one file after the other.
#pragma once

#include "base/ChildProcess.h"
#include "tagging/ctags/CtagsSettings.h"
#include "tagging/ctags/Source.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <poll.h>
#include <string>
#include <string_view>
#include <utility>

namespace tagging {

// It may receive several files at once, so that it never waits for a name; it works on the first. It writes a mark
// after the tags of each file, so the file that crashed it or hung it is known.
//
// Nothing here blocks: the owner polls several of these at a time. Not thread-safe; dies with its thread.
class CtagsProcess {
public:
    using Clock = std::chrono::steady_clock;
    using Done = std::function<void(Source& source, std::string_view output)>; // 'output' as ReadCtagsOutput takes it

    static constexpr size_t kPlaces = 3;

    static base::Result<std::unique_ptr<CtagsProcess>> Start(const CtagsSettings& settings, Parser parser);

    void Give(Source source);
    size_t Given() const { return sources.size(); } // files not done yet

    void GetPlaces(pollfd* places) const;                  // fills in kPlaces entries for poll()
    void Transfer(const pollfd* places, const Done& done); // reads and writes what they report as ready

    bool HasEnded() const { return hasEnded; }        // it has closed its output
    Clock::time_point Began() const { return began; } // when it began with its current file
    void BeginAgain() { began = Clock::now(); }

    // These end the process.
    int End();                        // returns its status, as from waitpid()
    std::deque<Source> TakeSources(); // the files not done, in order
    std::string LastWords();          // the end of its standard error

private:
    explicit CtagsProcess(base::ChildProcess child) : child(std::move(child)) {}

    void WriteNames();
    void ReadOutput(const Done& done);
    bool ReadErrors();
    void Finish(const Done& done);

    base::ChildProcess child;
    std::deque<Source> sources;
    Clock::time_point began;
    std::string names;   // still to be written
    std::string output;  // read so far for the files not done
    size_t searched = 0; // bytes of it without a mark
    std::string errors;
    bool hasEnded = false;
};

} // namespace tagging
