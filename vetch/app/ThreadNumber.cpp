#include "vetch/app/ThreadNumber.h"

#include <atomic>

namespace vetch {

namespace {

std::atomic<ThreadNumber> lastThread = kNoThread;
std::atomic<ThreadNumber> documentThread = kNoThread;

} // namespace

ThreadNumber CurrentThread()
{
    thread_local const ThreadNumber number = ++lastThread;
    return number;
}

ThreadNumber DocumentThread()
{
    return documentThread;
}

void SetDocumentThread(ThreadNumber thread)
{
    documentThread = thread;
}

bool OnDocumentThread()
{
    return documentThread == CurrentThread();
}

} // namespace vetch
