#include "wren/desktop/Endings.h"

#include "vetch/support/Cancellation.h"
#include "wren/desktop/Editor.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

namespace wren {

namespace {

constexpr std::array kSignals = {SIGTERM, SIGINT, SIGHUP};

// A handler may do little more than write to a descriptor; the loop reads the other one.
std::array<int, 2> gEnds = {-1, -1};
volatile std::sig_atomic_t gSignal = 0;

void Hear(int signal)
{
    const int before = errno;
    gSignal = signal;
    vetch::CancelReading(true); // the loop may be waiting for a lookup
    [[maybe_unused]] const ssize_t ignored = ::write(gEnds[0], "", 1);
    errno = before;
}

} // namespace

Endings::Endings(Editor& editor) : editor(editor)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, gEnds.data()) != 0)
        throw std::system_error(errno, std::generic_category(), "socketpair");
    auto* notifier = new QSocketNotifier(gEnds[1], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &Endings::End);
    for (const int signal : kSignals)
        std::signal(signal, &Hear);
}

Endings::~Endings()
{
    for (const int signal : kSignals)
        std::signal(signal, SIG_DFL);
    for (const int end : gEnds)
        ::close(end);
}

// A signal may come in the middle of a question or a menu of the plug-in's. That call cannot be left in order, so
// nothing is destroyed. The copies stay for the next start because no destructor removes them.
void Endings::End()
{
    editor.PrepareToEnd(gSignal);
    ::_exit(128 + gSignal);
}

} // namespace wren
