#include "tagging/Worker.h"

#include "base/Paths.h"
#include "tagging/ctags/CtagsBatch.h"
#include "tagging/ctags/ProcessEnd.h"

#include <algorithm>
#include <poll.h>
#include <thread>
#include <utility>

namespace tagging {

namespace {

// Files given to a worker's processes at a time. More would not keep them busier, and would make the end uneven.
constexpr size_t kMostGiven = 16;

// ctags writes in small pieces. Letting output gather while it has enough work costs nothing, and saves most context
// switches.
constexpr size_t kEnoughGiven = 8;
constexpr std::chrono::milliseconds kGathering{1};

// Starting ctags is negligible for this many files; more would make the progress jumpy.
constexpr size_t kFewestInBatch = 64;
constexpr size_t kMostInBatch = 500;
constexpr size_t kMostInMemory = 600;              // in all workers' batches: each is an open file
constexpr size_t kLargestBatch = 16 * 1024 * 1024; // bytes of sources: ctags' output may be three times as long

// After a wait so much longer than planned, the whole program must have been stopped, and ctags with it.
constexpr std::chrono::milliseconds kStopped{1000};

} // namespace

Worker::Worker(const Settings& settings, Observer& observer, TaggingRun& run, Collector& collector)
    : settings(settings), observer(observer), run(run), collector(collector)
{
}

void Worker::Run()
{
    HaveFilesTagged();
    for (Process& process : processes)
        process.reset();
    if (run.GoesOn())
        collector.Finish();
}

void Worker::HaveFilesTagged()
{
    while (run.GoesOn()) {
        if (Given() == 0 && WantsBatch())
            HaveBatchTagged();
        TakeFiles();
        if (Given() == 0)
            return;
        WaitForProcesses();
    }
}

// A share of the queue, so that at the end no worker waits for another's batch. 0 when the share is not worth a batch,
// or after a failed batch: the next may fail as well, and as slowly.
size_t Worker::BatchSize() const
{
    const size_t share = std::min(run.Queue().Size() / (2 * settings.jobs), kMostInBatch);
    return batchFailed || share < kFewestInBatch ? 0 : share;
}

void Worker::HaveBatchTagged()
{
    std::array<std::vector<Source>, kParsers> batches;
    size_t inMemory = 0;
    size_t bytes = 0;
    for (size_t left = BatchSize(); left > 0 && inMemory < kMostInMemory / settings.jobs && bytes < kLargestBatch;
         --left) {
        const std::optional<Work> work = run.Queue().Take(false);
        if (!work)
            break;
        std::optional<Source> source = MakeSource(*work);
        if (!source)
            continue;
        inMemory += source->text.IsOpen();
        bytes += source->size;
        if (FitsIntoBatch(*source))
            batches[static_cast<size_t>(source->parser)].push_back(std::move(*source));
        else
            Begin(std::move(*source));
    }
    const auto keep = [this](Source& source, std::string_view output) { Keep(source, output); };
    for (std::vector<Source>& batch : batches) {
        if (batch.empty() || (!batchFailed && TagBatch(settings.ctags, batch, run.StopDescriptors(), keep)))
            continue;
        batchFailed = true;
        for (Source& source : batch)
            Begin(std::move(source));
    }
}

// Reports the reason and returns nullopt when the file cannot be read.
std::optional<Source> Worker::MakeSource(const Work& work)
{
    std::string error;
    std::optional<Source> source = collector.Make(work.number, work.path, &error);
    if (source)
        return source;
    collector.LeaveOut(work.number);
    observer.Say("cannot read " + base::Shown(work.path) + ": " + error);
    ++counts.unreadable;
    run.FileFailed();
    return std::nullopt;
}

// Blocks only when there is nothing else to do. When the queue is long enough for a batch, the processes finish their
// files and get no more.
void Worker::TakeFiles()
{
    while (Given() < kMostGiven && !(Given() > 0 && WantsBatch())) {
        const std::optional<Work> work = run.Queue().Take(Given() == 0);
        if (!work)
            return;
        if (std::optional<Source> source = MakeSource(*work))
            Begin(std::move(*source));
    }
}

size_t Worker::Given() const
{
    size_t given = 0;
    for (const Process& process : processes)
        given += process != nullptr ? process->Given() : 0;
    return given;
}

void Worker::Begin(Source source)
{
    Process& process = processes[static_cast<size_t>(source.parser)];
    if (process == nullptr) {
        base::Result<Process> started = CtagsProcess::Start(settings.ctags, source.parser);
        if (!started) {
            run.Fail(started.Failure().Message());
            return;
        }
        process = std::move(*started);
    }
    process->Give(std::move(source));
}

void Worker::WaitForProcesses()
{
    constexpr size_t kPlaces = CtagsProcess::kPlaces;
    pollfd places[kParsers * kPlaces + TaggingRun::kStops];
    std::fill(std::begin(places), std::end(places), pollfd{-1, 0, 0});
    for (size_t i = 0; i < kParsers; ++i)
        if (processes[i] != nullptr)
            processes[i]->GetPlaces(places + i * kPlaces);
    pollfd* place = places + kParsers * kPlaces;
    for (const int stop : run.StopDescriptors())
        *place++ = {stop, POLLIN, 0};

    if (Given() >= kEnoughGiven)
        std::this_thread::sleep_for(kGathering);
    const std::chrono::milliseconds patience = TimeLeft();
    const Clock::time_point start = Clock::now();
    ::poll(places, std::size(places), static_cast<int>(patience.count()));
    if (Clock::now() - start > patience + kStopped)
        for (const Process& process : processes)
            if (process != nullptr)
                process->BeginAgain();

    const auto keep = [this](Source& source, std::string_view output) { Keep(source, output); };
    for (size_t i = 0; i < kParsers; ++i)
        if (processes[i] != nullptr) {
            processes[i]->Transfer(places + i * kPlaces, keep);
            LookAfter(processes[i]);
        }
}

// For the file that is nearest to its limit.
std::chrono::milliseconds Worker::TimeLeft() const
{
    const Clock::duration limit = std::chrono::seconds(settings.ctags.timeLimit);
    Clock::duration left = limit;
    for (const Process& process : processes)
        if (process != nullptr && process->Given() > 0)
            left = std::min(left, process->Began() + limit - Clock::now());
    return std::max(std::chrono::ceil<std::chrono::milliseconds>(left), std::chrono::milliseconds(0));
}

void Worker::Keep(Source& source, std::string_view output)
{
    collector.Keep(source, output);
    ++counts.files;
    run.FileDone();
}

void Worker::LookAfter(Process& process)
{
    if (process->HasEnded()) {
        const int status = process->End();
        if (IsCrash(status))
            Crashed(process);
        else
            Fail(process, status);
    } else if (process->Given() > 0 &&
               Clock::now() - process->Began() >= std::chrono::seconds(settings.ctags.timeLimit)) {
        TookTooLong(process);
    }
}

void Worker::Crashed(Process& process)
{
    if (process->Given() > 0)
        ++counts.crashed;
    GoOnWithout(process, "ctags crashed on ");
}

void Worker::TookTooLong(Process& process)
{
    ++counts.tookTooLong;
    GoOnWithout(process, "ctags took longer than " + std::to_string(settings.ctags.timeLimit) + " s for ");
}

// Leaves out the file that the process was working on, and gives the others to a new process.
void Worker::GoOnWithout(Process& process, const std::string& report)
{
    std::deque<Source> rest = process->TakeSources();
    process.reset();
    if (rest.empty())
        return;
    observer.Say(report + base::Shown(rest.front().path) + ", which is left out");
    collector.LeaveOut(rest.front().number);
    run.FileFailed();
    rest.pop_front();
    for (Source& source : rest)
        Begin(std::move(source));
}

void Worker::Fail(Process& process, int status)
{
    run.Fail(FailureOf(*process, settings.ctags, status).Message());
    process.reset();
}

} // namespace tagging
