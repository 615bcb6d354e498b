#include "vetch/support/ThreadStart.h"

#include "vetch/support/Complaint.h"

#include <atomic>
#include <exception>
#include <mutex>
#include <new>
#include <set>
#include <string>
#include <system_error>
#include <utility>

namespace vetch {

namespace {

ThreadStarter& TheStarter()
{
    static ThreadStarter* const starter = new ThreadStarter;
    return *starter;
}

// The losses that were reported to the user.
struct Losses {
    std::mutex mutex; // a leaf
    std::set<std::string> known;
};

// Never destroyed: a thread may still start another while the process ends.
Losses& TheLosses()
{
    static Losses* const losses = new Losses;
    return *losses;
}

std::atomic<bool> gRefused = false;

// Without memory for the report, the next loss is reported.
void Lost(const char* loss, const std::error_code& reason)
try {
    if (loss == nullptr)
        return;
    gRefused = true;
    {
        Losses& losses = TheLosses();
        const std::lock_guard guard(losses.mutex);
        if (!losses.known.insert(loss).second)
            return;
    }
    Complain("the system starts no more threads (" + reason.message() + "): " + loss);
} catch (const std::bad_alloc&) {
}

void Regained(const char* loss)
{
    if (loss == nullptr || !gRefused)
        return;
    Losses& losses = TheLosses();
    const std::lock_guard guard(losses.mutex);
    losses.known.erase(loss);
}

} // namespace

std::thread StartThread(const char* loss, std::function<void()> body)
{
    try {
        std::function<void()> guarded = [body = std::move(body)] { CallGuarded(body); };
        const ThreadStarter& starter = TheStarter();
        std::thread thread = starter ? starter(loss, std::move(guarded)) : std::thread(std::move(guarded));
        Regained(loss);
        return thread;
    } catch (const std::system_error& error) {
        Lost(loss, error.code());
    } catch (const std::bad_alloc&) {
        Lost(loss, std::make_error_code(std::errc::not_enough_memory));
    }
    return {};
}

bool ThreadsWereRefused()
{
    return gRefused;
}

void CallGuarded(const std::function<void()>& function)
{
    try {
        function();
    } catch (const std::exception& error) {
        Complain(std::string("a thread ended with an exception: ") + error.what());
    } catch (...) {
        Complain("a thread ended with an exception");
    }
}

void SetThreadStarter(ThreadStarter starter)
{
    TheStarter() = std::move(starter);
}

} // namespace vetch
