#include "wren/desktop/state/CopyWriter.h"

#include "vetch/support/ThreadStart.h"
#include "wren/core/TextFile.h"

#include <exception>
#include <unistd.h>
#include <utility>

namespace wren {

CopyWriter::CopyWriter(OnWritten onWritten) : onWritten(std::move(onWritten)) {}

CopyWriter::~CopyWriter()
{
    Finish();
}

void CopyWriter::Write(const std::string& file, std::string head, std::string text)
{
    Add(file, Copy{std::move(head), std::move(text)});
}

void CopyWriter::Remove(const std::string& file)
{
    Add(file, std::nullopt);
}

void CopyWriter::Finish()
{
    {
        std::unique_lock<std::mutex> held(lock);
        idle.wait(held, [this] { return !working; });
    }
    if (worker.joinable())
        worker.join();
}

void CopyWriter::Add(const std::string& file, Wish wish)
{
    {
        const std::lock_guard<std::mutex> held(lock);
        waiting.insert_or_assign(file, std::move(wish));
        if (std::exchange(working, true))
            return;
    }
    if (worker.joinable())
        worker.join(); // it has found nothing more to do, and is about to end
    worker = vetch::StartThread("copies of unsaved texts are written while you wait", [this] { Work(); });
    if (!worker.joinable())
        Work(); // the text counts for more than the moment
}

void CopyWriter::Work()
{
    std::unique_lock<std::mutex> held(lock);
    while (!waiting.empty()) {
        auto next = waiting.extract(waiting.begin());
        held.unlock();
        Carry(next.key(), std::move(next.mapped()));
        held.lock();
    }
    working = false;
    idle.notify_all();
}

// A lack of memory for a copy must not lose the text itself.
void CopyWriter::Carry(const std::string& file, Wish wish)
{
    if (!wish) {
        ::unlink(file.c_str());
        return;
    }
    std::string error;
    try {
        WriteWholeFile(file, wish->head.append(wish->text), &error);
    } catch (const std::exception& reason) {
        error = file + ": " + reason.what();
    }
    if (onWritten)
        onWritten(file, error);
}

} // namespace wren
