#include "tests/generate/Requests.h"

#include "generate/CreateTagsTask.h"
#include "tests/support/WaitLimit.h"
#include "vetch/support/ShellCommand.h"
#include "vetch/support/ThreadStart.h"

#include <condition_variable>
#include <list>
#include <mutex>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

namespace {

struct State {
    std::mutex mutex;
    std::condition_variable ended;
    std::list<Requests::Commands> threads; // those not taken yet
    int running = 0;
    int status = 0;
    bool noThreads = false;
    std::function<void(const std::string&)> meanwhile;
    vetch::ShellRequest lastRequest;
};
State state;

thread_local Requests::Commands* commands = nullptr; // of the current thread, if it is a recorded one

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

void RunRecorded(Requests::Commands* own, const std::function<void()>& body)
{
    commands = own;
    body();
    const std::lock_guard lock(state.mutex);
    --state.running;
    state.ended.notify_all();
}

std::thread Start(const char* loss, std::function<void()> body)
{
    if (loss == nullptr || std::string_view(loss) != kNoTagsAreMade)
        return std::thread(std::move(body));
    const std::lock_guard lock(state.mutex);
    if (state.noThreads)
        throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    Requests::Commands* const own = &state.threads.emplace_back();
    ++state.running;
    return std::thread([own, body = std::move(body)] { RunRecorded(own, body); });
}

} // namespace

Requests::Requests()
{
    state.status = 0;
    state.noThreads = false;
    vetch::SetThreadStarter(Start);
    vetch::SetShellRunner(Record);
}

Requests::~Requests()
{
    Take();
    state.meanwhile = nullptr;
    vetch::SetShellRunner(nullptr);
    vetch::SetThreadStarter(nullptr);
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
