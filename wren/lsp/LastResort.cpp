#include "wren/lsp/LastResort.h"

#include <chrono>
#include <cstdlib>

namespace wren::lsp {

LastResort::LastResort(int status)
{
    thread = std::thread([this, status] {
        constexpr std::chrono::seconds kLongest(3);
        std::unique_lock lock(mutex);
        if (!changed.wait_for(lock, kLongest, [this] { return isDone; }))
            std::_Exit(status);
    });
}

LastResort::~LastResort()
{
    {
        const std::lock_guard lock(mutex);
        isDone = true;
        changed.notify_all();
    }
    thread.join();
}

} // namespace wren::lsp
