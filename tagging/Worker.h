// A thread that tags files with its own ctags processes.
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

// It has one process for each parser in use. They die with the thread that calls Run().
class Worker {
public:
    // All must outlive it.
    Worker(const Settings& settings, Observer& observer, TaggingRun& run);

    void Run(); // takes files from the run's queue until there are no more, then sorts the tags

    // After Run():
    const TaggingCounts& Counts() const { return counts; }
    const std::vector<unsigned>& TaggedFiles() const { return files; }
    const TagsByFile& TooLong() const { return tooLong; } // tags that fit into no line
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
    TagsByFile tooLongAgain; // counted while the lines are read a second time
    bool batchFailed = false;
};

} // namespace tagging
