// One ctags that reads files' names and writes their tags, one file after the other.
#pragma once

#include "tagging/ctags/ChildProcess.h"
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

// It may be given several files, so that it need not wait for the next name; the first of those is what it works on. It
// writes a mark behind the tags of each file, hence it is known which file it was that crashed it or hung it.
//
// Nothing here waits: the owner polls the places of several of these at a time. Not thread-safe; dies with its thread.
class CtagsProcess {
public:
    using Clock = std::chrono::steady_clock;
    using Done = std::function<void(Source& source, std::string_view output)>; // 'output' as ReadCtagsOutput takes it

    static constexpr size_t kPlaces = 3;

    static base::Result<std::unique_ptr<CtagsProcess>> Start(const CtagsSettings& settings, Parser parser);

    void Give(Source source);
    size_t Given() const { return sources.size(); } // and not done yet

    void GetPlaces(pollfd* places) const;                  // what to wait for, kPlaces of them
    void Transfer(const pollfd* places, const Done& done); // what can be done now, of those

    bool HasEnded() const { return hasEnded; }        // it closed its output
    Clock::time_point Began() const { return began; } // when it began with the file that it works on
    void BeginAgain() { began = Clock::now(); }

    // These end it.
    int End();                        // its status as waitpid() has it
    std::deque<Source> TakeSources(); // those not done, in order
    std::string LastWords();          // the end of what it wrote to its standard error

private:
    explicit CtagsProcess(ChildProcess child) : child(std::move(child)) {}

    void WriteNames();
    void ReadOutput(const Done& done);
    bool ReadErrors();
    void Finish(const Done& done);

    ChildProcess child;
    std::deque<Source> sources;
    Clock::time_point began;
    std::string names;   // to be written
    std::string output;  // read, of files not done
    size_t searched = 0; // up to here there is no mark in it
    std::string errors;
    bool hasEnded = false;
};

} // namespace tagging
