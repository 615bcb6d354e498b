#include "tagging/Tagger.h"

#include "tagging/Worker.h"

#include <chrono>
#include <exception>
#include <system_error>
#include <utility>

namespace tagging {

namespace {

// A queue this long is worth another ctags, which takes as long to start as a few files to read.
constexpr size_t kFilesForWorker = 32;

constexpr std::chrono::milliseconds kPatience{100};

} // namespace

Tagger::Tagger(const Settings& settings, Observer& observer, const base::CancelToken& cancel, ThreadStarter start)
    : settings(settings), observer(observer), start(std::move(start)), run(cancel)
{
}

Tagger::~Tagger()
{
    run.Queue().Stop();
    for (std::thread& thread : threads)
        if (thread.joinable())
            thread.join();
}

void Tagger::Add(const std::string& path, std::string field)
{
    run.Add(path, std::move(field));
    const bool wantsWorker =
        workers.empty() || (workers.size() < settings.jobs && run.Queue().Size() > kFilesForWorker);
    if (wantsWorker && Fields().size() >= nextStart)
        StartWorker();
}

// If no thread can be started there is one worker less, and a later file tries again.
void Tagger::StartWorker()
{
    workers.push_back(std::make_unique<Worker>(settings, observer, run));
    const std::lock_guard lock(mutex);
    ++running;
    try {
        threads.push_back(start([this, worker = workers.back().get()] { Run(*worker); }));
    } catch (const std::system_error& error) {
        --running;
        workers.pop_back();
        nextStart = Fields().size() + kFilesForWorker;
        if (!std::exchange(lacksThreads, true))
            observer.Say("the system starts no more threads (" + error.code().message() +
                         "): fewer sources are tagged at a time");
    }
}

void Tagger::WorkHere()
{
    workers.push_back(std::make_unique<Worker>(settings, observer, run));
    ++running;
    Run(*workers.back());
}

void Tagger::Run(Worker& worker)
{
    try {
        worker.Run();
    } catch (const std::exception& problem) { // out of memory
        run.Fail(problem.what());
    }
    const std::lock_guard lock(mutex);
    --running;
    ended.notify_all();
}

bool Tagger::GoesOn()
{
    observer.Show(run.Done(), Fields().size());
    return run.GoesOn();
}

void Tagger::Finish()
{
    run.Queue().Close();
    if (workers.empty() && !Fields().empty())
        WorkHere();
    for (std::unique_lock lock(mutex); running > 0;) {
        ended.wait_for(lock, kPatience);
        lock.unlock();
        GoesOn();
        lock.lock();
    }
    for (std::thread& thread : threads)
        thread.join();
    tagged.resize(Fields().size());
    for (const std::unique_ptr<Worker>& worker : workers) {
        total += worker->Counts();
        tooLong.insert(worker->TooLong().begin(), worker->TooLong().end()); // no two workers share a file
        for (const unsigned file : worker->TaggedFiles())
            tagged[file] = true;
    }
    if (total.files == 0 && total.FailedFiles() > 0)
        run.Fail("none of the sources could be tagged");
}

std::vector<std::unique_ptr<tagsfile::LineSource>> Tagger::Lines()
{
    std::vector<std::unique_ptr<tagsfile::LineSource>> lines;
    for (const std::unique_ptr<Worker>& worker : workers)
        lines.push_back(worker->Lines());
    return lines;
}

} // namespace tagging
