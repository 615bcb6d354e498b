#include "tests/generate/Requests.h"

#include "tests/support/WaitLimit.h"
#include "vetch/support/ShellCommand.h"

#include <cerrno>
#include <condition_variable>
#include <list>
#include <memory>
#include <mutex>
#include <pthread.h>
#include <utility>

namespace {

struct State {
    std::mutex mutex;
    std::condition_variable ended;
    std::list<Requests::Commands> threads; // those not taken yet
    int running = 0;
    int status = 0;
    bool noThreads = false;
    bool allDetached = true;
    std::function<void(const std::string&)> meanwhile;
    vetch::ShellRequest lastRequest;
};
State state;

thread_local Requests::Commands* commands = nullptr; // of the current thread, if it is a recorded one

struct Start {
    void* (*routine)(void*);
    void* argument;
    Requests::Commands* commands;
};

int Record(const char* command, const vetch::ShellRequest& request)
{
    std::unique_lock lock(state.mutex);
    if (commands != nullptr)
        commands->push_back(command);
    state.lastRequest = request;
    const auto meanwhile = state.meanwhile;
    const int status = state.status;
    lock.unlock();
    if (meanwhile)
        meanwhile(command);
    return status;
}

void* RunRecorded(void* untyped)
{
    const std::unique_ptr<const Start> start(static_cast<Start*>(untyped));
    commands = start->commands;
    void* const result = start->routine(start->argument);
    const std::lock_guard lock(state.mutex);
    --state.running;
    state.ended.notify_all();
    return result;
}

bool IsDetached(const pthread_attr_t* attributes)
{
    int detached = PTHREAD_CREATE_JOINABLE;
    return attributes != nullptr && ::pthread_attr_getdetachstate(attributes, &detached) == 0 &&
           detached == PTHREAD_CREATE_DETACHED;
}

} // namespace

extern "C" {
int __real_pthread_create(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
int __wrap_pthread_create(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
}

int __wrap_pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*routine)(void*), void* argument)
{
    const std::lock_guard lock(state.mutex);
    if (state.noThreads)
        return EAGAIN;
    auto start = std::make_unique<Start>(Start{routine, argument, &state.threads.emplace_back()});
    const int status = __real_pthread_create(thread, attributes, RunRecorded, start.get());
    if (status != 0)
        return status;
    start.release();
    ++state.running;
    state.allDetached = state.allDetached && IsDetached(attributes);
    return 0;
}

Requests::Requests()
{
    state.status = 0;
    state.noThreads = false;
    state.allDetached = true;
    vetch::SetShellRunner(Record);
}

Requests::~Requests()
{
    Take();
    state.meanwhile = nullptr;
    vetch::SetShellRunner(nullptr);
}

std::vector<Requests::Commands> Requests::Take()
{
    const WaitLimit limit("all threads that generate tags had ended");
    std::unique_lock lock(state.mutex);
    state.ended.wait(lock, [] { return state.running == 0; });
    std::vector<Commands> taken;
    for (Commands& each : std::exchange(state.threads, {}))
        taken.push_back(std::move(each));
    return taken;
}

void Requests::AnswerCommandsWith(int status)
{
    const std::lock_guard lock(state.mutex);
    state.status = status;
}

void Requests::DuringCommands(std::function<void(const std::string&)> meanwhile)
{
    const std::lock_guard lock(state.mutex);
    state.meanwhile = std::move(meanwhile);
}

void Requests::GiveNoThreads()
{
    const std::lock_guard lock(state.mutex);
    state.noThreads = true;
}

vetch::ShellRequest Requests::Last() const
{
    const std::lock_guard lock(state.mutex);
    return state.lastRequest;
}

bool Requests::AllWereDetached() const
{
    const std::lock_guard lock(state.mutex);
    return state.allDetached;
}
