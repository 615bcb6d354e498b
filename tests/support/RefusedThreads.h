// Threads that do not start, and the reports of that to the user.
#pragma once

#include "vetch/support/Complaint.h"
#include "vetch/support/ThreadStart.h"

#include <mutex>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

// While one lives, the framework gets no threads, or only the first 'few'. One at a time.
class RefusedThreads {
public:
    explicit RefusedThreads(int few = 0)
    {
        vetch::SetThreadStarter([left = few](const char*, std::function<void()> body) mutable {
            if (left-- <= 0)
                throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
            return std::thread(std::move(body));
        });
    }
    ~RefusedThreads() { vetch::SetThreadStarter(nullptr); }
    RefusedThreads(const RefusedThreads&) = delete;
    RefusedThreads& operator=(const RefusedThreads&) = delete;
};

// Records complaints while it lives. One at a time.
class Complaints {
public:
    Complaints()
    {
        vetch::SetComplaintReporter([this](const std::string& text) {
            const std::lock_guard guard(mutex);
            texts.push_back(text);
        });
    }
    ~Complaints() { vetch::SetComplaintReporter(nullptr); }
    Complaints(const Complaints&) = delete;
    Complaints& operator=(const Complaints&) = delete;

    std::vector<std::string> Take()
    {
        const std::lock_guard guard(mutex);
        return std::exchange(texts, {});
    }

private:
    std::mutex mutex;
    std::vector<std::string> texts;
};

// The complaint about a missing thread; 'loss' says what does not happen.
inline std::string NoThreadsFor(const std::string& loss)
{
    return "the system starts no more threads (Resource temporarily unavailable): " + loss;
}
