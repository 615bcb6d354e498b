// A thread that has files read by its own ctags processes.
#pragma once

#include "tagging/Collector.h"
#include "tagging/Observer.h"
#include "tagging/Settings.h"
#include "tagging/TaggingRun.h"
#include "tagging/ctags/CtagsProcess.h"

#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace tagging {

// It has one process for each parser in use. They die with the thread that calls Run().
class Worker {
public:
    // All must outlive it.
    Worker(const Settings& settings, Observer& observer, TaggingRun& run, Collector& collector);

    void Run(); // takes files from the run's queue until there are no more, then lets the collector finish

    const TaggingCounts& Counts() const { return counts; } // after Run()

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

    const Settings& settings;
    Observer& observer;
    TaggingRun& run;
    Collector& collector;
    std::array<Process, kParsers> processes;
    TaggingCounts counts;
    bool batchFailed = false;
};

} // namespace tagging
