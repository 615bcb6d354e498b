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

GuiLoop::GuiLoop(QtDisplay& display)
    : display(display), wakeUps(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (wakeUps < 0)
        throw std::system_error(errno, std::generic_category(), "eventfd");
    notifier = new QSocketNotifier(wakeUps, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &GuiLoop::Woken);
    // A write to an eventfd fails only when its counter is full, and then the reader is awake already.
    const auto wake = [fd = wakeUps] { [[maybe_unused]] const int ignored = ::eventfd_write(fd, 1); };
    display.SetWakeUp(wake);
    vetch::SetWakeUp(wake);
}

GuiLoop::~GuiLoop()
{
    vetch::SetWakeUp(nullptr);
    display.SetWakeUp(nullptr);
    notifier->setEnabled(false);
    ::close(wakeUps);
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
    [[maybe_unused]] const int ignored = ::eventfd_read(wakeUps, &count);
    LetThrough();
}

} // namespace wren
