#include "wren/desktop/GuiLoop.h"

#include "vetch/app/Loop.h"
#include "wren/desktop/display/QtDisplay.h"

#include <QSocketNotifier>

#include <cerrno>
#include <cstdint>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>

namespace wren {

namespace {

// Writing to it is all that other threads do. It is kept open for the life of the process: a thread that was late to
// hear of the loop's end then writes to it, and not to another file.
int WakeUps()
{
    static const int wakeUps = [] {
        const int made = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
        if (made < 0)
            throw std::system_error(errno, std::generic_category(), "eventfd");
        return made;
    }();
    return wakeUps;
}

} // namespace

GuiLoop::GuiLoop(QtDisplay& display)
    : display(display), notifier(new QSocketNotifier(WakeUps(), QSocketNotifier::Read, this))
{
    connect(notifier, &QSocketNotifier::activated, this, &GuiLoop::Woken);
    display.SetWakeUp(&GuiLoop::Wake);
    vetch::SetWakeUp(&GuiLoop::Wake);
}

GuiLoop::~GuiLoop()
{
    vetch::SetWakeUp(nullptr);
    display.SetWakeUp(nullptr);
}

void GuiLoop::Wake()
{
    // It fails only when the counter is full, and then the reader is awake already.
    [[maybe_unused]] const int ignored = ::eventfd_write(WakeUps(), 1);
}

void GuiLoop::LetThrough()
{
    display.Drain();
    if (dispatching)
        return;
    dispatching = true;
    vetch::RunPending();
    dispatching = false;
    display.Drain();
}

void GuiLoop::Woken()
{
    std::uint64_t count = 0;
    [[maybe_unused]] const int ignored = ::eventfd_read(WakeUps(), &count);
    LetThrough();
    emit Woke();
}

} // namespace wren
