#include "cplustags/Tagger.h"

#include "cplustags/Interrupt.h"
#include "cplustags/Progress.h"
#include "cplustags/Worker.h"

#include <chrono>
#include <exception>
#include <system_error>
#include <utility>

namespace cplustags {

namespace {

// So many files in the queue are worth another ctags, which takes as long to start as some files to read.
constexpr size_t kFilesForWorker = 32;

// When ctags cannot cope with any of the first files, it is not the files' fault.
constexpr size_t kMostFailures = 20;

constexpr std::chrono::milliseconds kPatience{100};

} // namespace

Tagger::Counts& Tagger::Counts::operator+=(const Counts& other)
{
    files += other.files;
    tags += other.tags;
    tooLong += other.tooLong;
    crashed += other.crashed;
    tookTooLong += other.tookTooLong;
    unreadable += other.unreadable;
    return *this;
}

Tagger::Tagger(const Settings& settings, Progress& progress, ThreadStarter start)
    : settings(settings), progress(progress), start(std::move(start))
{
}

Tagger::~Tagger()
{
    queue.Stop();
    for (std::thread& thread : threads)
        if (thread.joinable())
            thread.join();
}

void Tagger::Add(const std::string& path, std::string field)
{
    queue.Add({static_cast<unsigned>(fields.size()), path});
    fields.push_back(std::move(field));
    const bool wantsWorker = workers.empty() || (workers.size() < settings.jobs && queue.Size() > kFilesForWorker);
    if (wantsWorker && fields.size() >= nextStart)
        StartWorker();
}

// Without a thread for it there is one worker less, and some files later it is tried again.
void Tagger::StartWorker()
{
    const InterruptsElsewhere elsewhere;
    workers.push_back(std::make_unique<Worker>(*this));
    const std::lock_guard lock(mutex);
    ++running;
    try {
        threads.push_back(start([this, worker = workers.back().get()] { Run(*worker); }));
    } catch (const std::system_error& error) {
        --running;
        workers.pop_back();
        nextStart = fields.size() + kFilesForWorker;
        if (!std::exchange(lacksThreads, true))
            progress.Say("the system starts no more threads (" + error.code().message() +
                         "): fewer sources are tagged at a time");
    }
}

// This thread has to take the signals, since there is no other.
void Tagger::WorkHere()
{
    workers.push_back(std::make_unique<Worker>(*this));
    ++running;
    Run(*workers.back());
}

void Tagger::Run(Worker& worker)
{
    try {
        worker.Run();
    } catch (const std::exception& problem) { // memory
        Fail(problem.what());
    }
    const std::lock_guard lock(mutex);
    --running;
    ended.notify_all();
}

bool Tagger::GoesOn()
{
    if (Interrupted())
        queue.Stop();
    progress.Show(done, fields.size());
    return !queue.IsStopped();
}

void Tagger::Finish()
{
    queue.Close();
    if (workers.empty() && !fields.empty())
        WorkHere();
    for (std::unique_lock lock(mutex); running > 0;) {
        ended.wait_for(lock, kPatience);
        lock.unlock();
        GoesOn();
        lock.lock();
    }
    for (std::thread& thread : threads)
        thread.join();
    tagged.resize(fields.size());
    for (const std::unique_ptr<Worker>& worker : workers) {
        total += worker->Counts();
        tooLong.insert(worker->TooLong().begin(), worker->TooLong().end()); // no two workers have the same file
        for (const unsigned file : worker->TaggedFiles())
            tagged[file] = true;
    }
    if (total.files == 0 && total.FailedFiles() > 0)
        Fail("none of the sources could be tagged");
}

std::string Tagger::Failure() const
{
    const std::lock_guard lock(mutex);
    return failure;
}

std::vector<std::unique_ptr<LineSource>> Tagger::Lines()
{
    std::vector<std::unique_ptr<LineSource>> lines;
    for (const std::unique_ptr<Worker>& worker : workers)
        lines.push_back(worker->Lines());
    return lines;
}

void Tagger::Fail(const std::string& reason)
{
    {
        const std::lock_guard lock(mutex);
        if (failure.empty())
            failure = reason;
    }
    queue.Stop();
}

void Tagger::FileDone()
{
    ++done;
}

void Tagger::FileFailed()
{
    ++done;
    if (++failed >= kMostFailures && failed == done)
        Fail("none of the first " + std::to_string(kMostFailures) + " sources could be tagged");
}

} // namespace cplustags
