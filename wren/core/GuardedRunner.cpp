#include "wren/core/GuardedRunner.h"

#include "vetch/storage/Home.h"
#include "vetch/support/FThread.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <unistd.h>
#include <utility>

namespace wren {

namespace {

constexpr int kNotRun = -1; // the result of system() without a process

// The plug-in's threads are detached. They may pass a line at any time, even after the runner's end.
std::mutex gMutex;
GuardedRunner* gRunner = nullptr;

} // namespace

// One request of the plug-in, from its first line to its last.
struct GuardedRunner::Request {
    std::string file;
    std::unique_ptr<TagsRun> run;      // null when the request does not run
    std::optional<StaleTags> declined; // set when the automatic rebuild was refused
};

GuardedRunner::GuardedRunner(int output, News news) : output(output), news(std::move(news)), unasked(::geteuid())
{
    {
        const std::lock_guard guard(gMutex);
        gRunner = this;
    }
    vetch::SetShellRunner(TakeForPlugin);
}

GuardedRunner::~GuardedRunner()
{
    {
        const std::lock_guard guard(gMutex);
        gRunner = nullptr;
    }
    Stop(SIGTERM);
    std::unique_lock lock(mutex);
    calmed.wait(lock, [this] { return calls == 0; });
}

// Stays the plug-in's runner after this object's end: the next line must not reach the system's shell.
int GuardedRunner::TakeForPlugin(const char* command, const vetch::ShellRequest& request)
{
    GuardedRunner* runner;
    {
        const std::lock_guard guard(gMutex);
        if (gRunner == nullptr)
            return kNotRun;
        runner = gRunner;
        runner->BeginCall();
    }
    const int status = runner->Take(command, request);
    runner->EndCall();
    return status;
}

void GuardedRunner::BeginCall()
{
    const std::lock_guard guard(mutex);
    ++calls;
}

void GuardedRunner::EndCall()
{
    const std::lock_guard guard(mutex);
    --calls;
    calmed.notify_all();
}

int GuardedRunner::Take(const char* command, const vetch::ShellRequest& asked)
{
    const std::optional<TagsLine> line = ReadTagsLine(command, Home());
    if (!line)
        return kNotRun; // an unknown kind of line does not run unguarded
    Request& request = Find(*line, asked);
    const int status = Carry(request, *line, command);
    if (line->kind == TagsLine::Kind::Move)
        End(request, asked);
    return status;
}

// The line's request. A first line starts a new one.
GuardedRunner::Request& GuardedRunner::Find(const TagsLine& line, const vetch::ShellRequest& asked)
{
    {
        const std::lock_guard guard(mutex);
        const auto known = requests.find(&asked);
        if (known != requests.end())
            return *known->second;
    }
    auto request = std::make_unique<Request>();
    request->file = line.file;
    if (!asked.IsAskedFor())
        if (const std::optional<std::string> why = unasked.WhyNot(asked, line.file))
            request->declined = StaleTags{line.file, asked.newer, *why, {}};
    const std::lock_guard guard(mutex);
    if (!request->declined)
        Begin(*request, line);
    return *requests.emplace(&asked, std::move(request)).first->second;
}

// Starts a run, unless one for the same file can be joined.
void GuardedRunner::Begin(Request& request, const TagsLine& line)
{
    const bool joins = std::ranges::any_of(
        requests, [&](const auto& other) { return other.second->run != nullptr && other.second->file == line.file; });
    if (joins)
        return;
    request.run = std::make_unique<TagsRun>(line, output, [this](const std::string& directory) {
        if (news.waits)
            news.waits(directory);
    });
    if (stopped != 0)
        request.run->Stop(stopped);
}

int GuardedRunner::Carry(Request& request, const TagsLine& line, const std::string& command)
{
    if (request.declined)
        request.declined->lines.push_back(command);
    if (request.run == nullptr)
        return 0;
    if (news.runs)
        news.runs(command);
    Tell(news.changed);
    return request.run->Take(line, command);
}

void GuardedRunner::End(Request& request, const vetch::ShellRequest& asked)
{
    if (request.declined && news.stale)
        news.stale(*request.declined);
    if (request.run != nullptr && news.ended)
        news.ended(request.run->Outcome());
    if (request.run != nullptr && !asked.IsAskedFor())
        unasked.Ended(asked, request.file);
    {
        const std::lock_guard guard(mutex);
        requests.erase(&asked);
    }
    Tell(news.changed);
}

void GuardedRunner::Tell(const std::function<void()>& news) const
{
    if (news)
        news();
}

bool GuardedRunner::Rebuild(const StaleTags& stale)
{
    BeginCall();
    const bool started = vetch::StartDetached("stale tags are not rebuilt", [this, stale] {
        const vetch::ShellRequest asked;
        for (const std::string& line : stale.lines)
            Take(line.c_str(), asked);
        EndCall();
    });
    if (!started)
        EndCall();
    return started;
}

std::vector<std::string> GuardedRunner::Running() const
{
    const std::lock_guard guard(mutex);
    std::vector<std::string> files;
    for (const auto& [asked, request] : requests)
        if (request->run != nullptr)
            files.push_back(request->file);
    return files;
}

void GuardedRunner::Stop(int signal)
{
    const std::lock_guard guard(mutex);
    stopped = signal;
    PassOn(signal);
}

void GuardedRunner::StopRunning(int signal)
{
    const std::lock_guard guard(mutex);
    PassOn(signal);
}

void GuardedRunner::PassOn(int signal)
{
    for (const auto& [asked, request] : requests)
        if (request->run != nullptr)
            request->run->Stop(signal);
}

void GuardedRunner::StopAndWait(int signal)
{
    constexpr std::chrono::seconds kPatience(2);
    Stop(signal);
    if (WaitUntilIdle(kPatience))
        return;
    Stop(signal);
    WaitUntilIdle(kPatience);
}

bool GuardedRunner::WaitUntilIdle(std::chrono::milliseconds limit) const
{
    std::unique_lock lock(mutex);
    return calmed.wait_for(lock, limit, [this] { return requests.empty() && calls == 0; });
}

} // namespace wren
