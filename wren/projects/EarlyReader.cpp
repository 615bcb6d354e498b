#include "wren/projects/EarlyReader.h"

#include <chrono>
#include <exception>
#include <utility>

namespace wren {

namespace {

constexpr std::chrono::milliseconds kBurstPause(10); // changes that come faster are not for a question between them

}

EarlyReader::EarlyReader() : thread([this] { Run(); }) {}

EarlyReader::~EarlyReader()
{
    {
        const std::lock_guard lock(mutex);
        ends = true;
        changed.notify_all();
    }
    thread.join();
}

void EarlyReader::TextChanged(std::shared_ptr<Project> project, std::string path, OpenText text)
{
    const std::lock_guard lock(mutex);
    next = {std::move(project), std::move(path), std::move(text)};
    changed.notify_all();
}

void EarlyReader::Run()
{
    std::unique_lock lock(mutex);
    while (true) {
        changed.wait(lock, [this] { return ends || next.project != nullptr; });
        while (!ends && changed.wait_for(lock, kBurstPause) != std::cv_status::timeout) {
        }
        if (ends)
            return;
        Work work = std::exchange(next, {});
        lock.unlock();
        try {
            work.project->ReadAhead(work.path, work.text);
        } catch (const std::exception&) { // no memory: the question tells the user
        }
        work = {}; // a project may end here, which takes a moment
        lock.lock();
    }
}

} // namespace wren
