#include "symbols/update/TreeWatch.h"

#include "symbols/update/SourceNames.h"
#include "symbols/update/Surroundings.h"

#include <cerrno>
#include <sys/inotify.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace symbols {

namespace {

constexpr std::uint32_t kOfDirectory = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB;
constexpr std::uint32_t kOfItself = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t kOfContent = IN_CLOSE_WRITE | IN_MODIFY;

bool ConcernsGit(std::string_view leaf)
{
    return leaf == "HEAD" || leaf == "index";
}

} // namespace

TreeWatch::TreeWatch(Options options)
    : options(std::move(options)), notify(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)), isComplete(notify.IsOpen())
{
}

void TreeWatch::BeginWalk()
{
    const std::lock_guard lock(mutex);
    ++walk;
    isComplete = notify.IsOpen();
}

// A directory that was moved keeps its watch, and gets its new path here.
void TreeWatch::Watch(const std::string& directory, Kind kind)
{
    const bool isStart = options.starts.contains(directory);
    const std::uint32_t flags = kOfDirectory | kOfItself | kOfContent | IN_ONLYDIR | IN_EXCL_UNLINK |
                                (isStart ? 0 : static_cast<std::uint32_t>(IN_DONT_FOLLOW));
    const std::lock_guard lock(mutex);
    const int number = ::inotify_add_watch(notify.Number(), directory.empty() ? "/" : directory.c_str(), flags);
    if (number < 0) {
        isComplete = isComplete && errno != ENOSPC && errno != ENOMEM; // otherwise the directory is gone or closed
        return;
    }
    if (watched.size() >= options.most && !watched.contains(number)) {
        ::inotify_rm_watch(notify.Number(), number);
        isComplete = false;
        return;
    }
    watched[number] = {directory, kind, walk};
}

void TreeWatch::EndWalk()
{
    const std::lock_guard lock(mutex);
    std::erase_if(watched, [this](const auto& each) {
        if (each.second.walk == walk)
            return false;
        ::inotify_rm_watch(notify.Number(), each.first);
        return true;
    });
}

bool TreeWatch::IsComplete() const
{
    const std::lock_guard lock(mutex);
    return isComplete;
}

void TreeWatch::Events::Add(Events&& more)
{
    files.merge(more.files);
    needsWalk = needsWalk || more.needsWalk;
}

void TreeWatch::Take(int number, std::uint32_t what, std::string_view name, Events& events)
{
    if ((what & IN_Q_OVERFLOW) != 0)
        events.needsWalk = true;
    const std::lock_guard lock(mutex);
    const auto place = watched.find(number);
    if (place == watched.end())
        return;
    const Watched& directory = place->second;
    if (name.empty()) {
        // About the directory itself. The one above it says the same, unless this is where walks begin.
        events.needsWalk = events.needsWalk || (what & (kOfItself | IN_UNMOUNT)) != 0;
        if ((what & IN_IGNORED) != 0)
            watched.erase(place);
        return;
    }
    if (directory.kind == Kind::Git)
        events.needsWalk = events.needsWalk || ConcernsGit(name);
    else if (directory.kind == Kind::Index)
        events.needsWalk = events.needsWalk || (name == "manifest" && (what & IN_DELETE) != 0);
    else if ((what & IN_ISDIR) != 0 || TellingNames::IsOne(name))
        events.needsWalk = true;
    else if (IsSourceName(name) || (options.isSystem && CanBeHeaderWithoutSuffix(name)))
        events.files.insert((directory.path + "/").append(name));
}

TreeWatch::Events TreeWatch::Read()
{
    Events events;
    alignas(inotify_event) char buffer[65536];
    for (ssize_t length; (length = ::read(notify.Number(), buffer, sizeof buffer)) > 0;)
        for (ssize_t at = 0; at < length;) {
            const auto& event = *reinterpret_cast<const inotify_event*>(buffer + at);
            at += static_cast<ssize_t>(sizeof event + event.len);
            Take(event.wd, event.mask, event.len > 0 ? std::string_view(event.name) : "", events);
        }
    return events;
}

} // namespace symbols
