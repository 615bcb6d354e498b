// The main of test programs that use Qt.
#include <QApplication>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <iterator>
#include <thread>

namespace {

std::ptrdiff_t Threads()
{
    std::error_code error;
    return std::distance(std::filesystem::directory_iterator("/proc/self/task", error), {});
}

// Qt's own wait for the threads that it paints with is over before they have released their data, which the search
// for leaks would report.
void WaitForQtsThreads(std::ptrdiff_t others)
{
    constexpr std::chrono::seconds kLongestEnd(5);
    const auto limit = std::chrono::steady_clock::now() + kLongestEnd;
    while (Threads() > others && std::chrono::steady_clock::now() < limit)
        std::this_thread::yield();
}

} // namespace

int main(int count, char** words)
{
    // CTest asks for the list of tests where there may be no platform to draw on.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&count, words);
    const std::ptrdiff_t threads = Threads();
    int status = 0;
    {
        const QApplication application(count, words);
        status = RUN_ALL_TESTS();
    }
    WaitForQtsThreads(threads);
    return status;
}
