#include "wren/instance/Instance.h"

#include "base/Hash.h"
#include "base/UserDirectories.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <string_view>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace wren {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kWaiting = 16;                            // starts that the running editor has not noticed yet
constexpr std::chrono::milliseconds kSocketIsMade(500); // after the claim
constexpr std::chrono::milliseconds kLookAgain(20);

std::string Variable(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::string NameOfPlace(const std::string& state, const std::string& folder)
{
    std::string all = state + '\0' + folder;
    for (const char* variable : {"WAYLAND_DISPLAY", "DISPLAY", "QT_QPA_PLATFORM"})
        all += '\0' + Variable(variable);
    return base::Fnv1aDigits(all);
}

bool IsPrivate(const std::string& directory)
{
    struct stat status;
    return ::lstat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() &&
           (status.st_mode & 077) == 0;
}

sockaddr_un AddressOf(const std::string& place)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, place.data(), place.size());
    return address;
}

base::Descriptor NewSocket(int more)
{
    return base::Descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | more, 0));
}

base::Descriptor ConnectTo(const std::string& place)
{
    base::Descriptor socket = NewSocket(0);
    const sockaddr_un address = AddressOf(place);
    if (!socket.IsOpen() ||
        ::connect(socket.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 ||
        !IsFromThisUser(socket.Number()))
        return base::Descriptor();
    return socket;
}

bool SendAll(int socket, std::string_view text, std::chrono::milliseconds patience)
{
    const timeval limit{patience.count() / 1000, patience.count() % 1000 * 1000};
    ::setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof(limit));
    while (!text.empty()) {
        const ssize_t sent = ::send(socket, text.data(), text.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR)
            continue;
        if (sent <= 0)
            return false;
        text.remove_prefix(static_cast<size_t>(sent));
    }
    return true;
}

// An editor that starts just now has the right already, and the socket a moment later.
base::Descriptor ConnectInTime(const std::string& place, Clock::time_point until)
{
    for (;;) {
        base::Descriptor socket = ConnectTo(place);
        if (socket.IsOpen() || Clock::now() >= until)
            return socket;
        std::this_thread::sleep_for(kLookAgain);
    }
}

// A line of the answer with its line break; "" at the end, or when none comes in time.
std::string ReadLine(int socket, std::optional<Clock::time_point> until)
{
    std::string line;
    while (!line.ends_with('\n') && line.size() < 64) {
        int wait = -1;
        if (until)
            wait = static_cast<int>(
                std::max<long>(0, std::chrono::ceil<std::chrono::milliseconds>(*until - Clock::now()).count()));
        pollfd ready{socket, POLLIN, 0};
        const int polled = ::poll(&ready, 1, wait);
        if (polled < 0 && errno == EINTR)
            continue;
        char each = 0;
        if (polled <= 0 || ::read(socket, &each, 1) != 1)
            return "";
        line.push_back(each);
    }
    return line;
}

Answer WaitForClosing(int socket)
{
    const std::string line = ReadLine(socket, std::nullopt);
    return line == kClosed ? Answer::Closed : line == kFailed ? Answer::Failed : Answer::Ended;
}

} // namespace

base::Result<std::string> MeetingPlace(const std::string& folder)
{
    const std::string state = base::StateDirectory("wren");
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    const bool hasRuntime = runtime != nullptr && *runtime == '/';
    if (!hasRuntime && state.empty())
        return base::Error{"there is no directory for a socket"};
    const std::string directory = hasRuntime ? std::string(runtime) + "/wren" : state;
    std::error_code failure;
    std::filesystem::create_directories(std::filesystem::path(directory).parent_path(), failure);
    if (::mkdir(directory.c_str(), 0700) != 0 && errno != EEXIST)
        return base::SystemError(directory);
    if (!IsPrivate(directory))
        return base::Error{directory + " is not a directory of this user's alone"};
    const std::string place = directory + "/" + NameOfPlace(state, folder);
    if (place.size() >= sizeof(sockaddr_un::sun_path))
        return base::Error{place + " is too long for a socket"};
    return place;
}

base::Result<std::optional<Claim>> ClaimPlace(const std::string& place)
{
    Claim claim;
    const std::string lock = place + ".lock";
    claim.lock = base::Descriptor(::open(lock.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
    if (!claim.lock.IsOpen())
        return base::SystemError(lock);
    if (::flock(claim.lock.Number(), LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK)
            return std::optional<Claim>();
        return base::SystemError(lock);
    }
    if (::unlink(place.c_str()) != 0 && errno != ENOENT) // whoever made it no longer has the lock
        return base::SystemError(place);
    claim.listener = NewSocket(SOCK_NONBLOCK);
    const sockaddr_un address = AddressOf(place);
    if (!claim.listener.IsOpen() ||
        ::bind(claim.listener.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 ||
        ::listen(claim.listener.Number(), kWaiting) != 0)
        return base::SystemError(place);
    return std::optional<Claim>(std::move(claim));
}

bool IsFromThisUser(int socket)
{
    ucred peer{};
    socklen_t size = sizeof(peer);
    return ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && size == sizeof(peer) &&
           peer.uid == ::geteuid();
}

Answer AskRunning(const std::string& place, const OpenRequest& request, std::chrono::milliseconds patience)
{
    const Clock::time_point until = Clock::now() + patience;
    const base::Descriptor socket = ConnectInTime(place, std::min(until, Clock::now() + kSocketIsMade));
    if (!socket.IsOpen() || !SendAll(socket.Number(), FormOf(request), patience))
        return Answer::Nobody;
    const std::string first = ReadLine(socket.Number(), until);
    if (first == kFailed)
        return Answer::Failed;
    if (first != kTaken)
        return Answer::Nobody;
    return request.waits && !request.places.empty() ? WaitForClosing(socket.Number()) : Answer::Taken;
}

} // namespace wren
