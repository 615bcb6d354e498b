// One of the threads that have files tagged, with ctags processes of its own.
#pragma once

#include "tagging/Observer.h"
#include "tagging/SourceMaker.h"
#include "tagging/TagStore.h"
#include "tagging/TaggingRun.h"
#include "tagging/ctags/CtagsProcess.h"

#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tagging {

// Its processes, one for each parser that is needed, die with the thread that calls Run().
class Worker {
public:
    // All must outlive it.
    Worker(const Settings& settings, Observer& observer, TaggingRun& run);

    void Run(); // takes files from the run's queue until there are no more, then sorts what it has

    // After Run():
    const TaggingCounts& Counts() const { return counts; }
    const std::vector<unsigned>& TaggedFiles() const { return files; }
    const TagsByFile& TooLong() const { return tooLong; } // those that no line can hold
    std::unique_ptr<tagsfile::LineSource> Lines();

private:
    using Clock = CtagsProcess::Clock;
    using Process = std::unique_ptr<CtagsProcess>;

    void HaveFilesTagged();
    size_t BatchSize() const;
    bool WantsBatch() const { return BatchSize() > 0; }
    void HaveBatchTagged();
    std::optional<Source> MakeSource(const Work& work);
    void TakeFiles();
    size_t Given() const;
    void Begin(Source source);
    void WaitForProcesses();
    std::chrono::milliseconds TimeLeft() const;
    void Keep(Source& source, std::string_view output);
    void LookAfter(Process& process);
    void Crashed(Process& process);
    void TookTooLong(Process& process);
    void GoOnWithout(Process& process, const std::string& report);
    void Fail(Process& process, int status);
    void SortAndCount();

    const Settings& settings;
    Observer& observer;
    TaggingRun& run;
    SourceMaker sources;
    std::array<Process, kParsers> processes;
    TagStore store;
    std::vector<unsigned> files;
    TaggingCounts counts;
    TagsByFile tooLong;
    TagsByFile tooLongAgain; // when the lines are read a second time
    bool batchFailed = false;
};

} // namespace tagging
