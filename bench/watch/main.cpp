// Runs a program with windows and watches the screen; bench/desktop runs this. Prints the result as a line of JSON.
//
//     window_watch start PROGRAM WORDS...           when its window was shown, drawn, and coloured
//     window_watch idle SECONDS PROGRAM WORDS...    how often its threads wake up without events
//     window_watch keys COUNT PROGRAM WORDS...      the time from a key to the next drawing
//
// Only a window manager may share the screen with this program.
#include "bench/watch/ScreenWatch.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace wren::bench {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr auto kQuiet = milliseconds(1500); // a window without changes for this time is complete
constexpr auto kLongest = seconds(30);
constexpr std::string_view kTyped = " strtoul";
constexpr int kColourful = 48; // the least difference between the strongest and the weakest of red, green and blue

// A running program with all its children; they end with this object.
class Program {
public:
    explicit Program(char** words) : started(Clock::now()), process(::fork())
    {
        if (process == 0) {
            ::setsid();
            ::execvp(words[0], words);
            std::perror(words[0]);
            ::_exit(127);
        }
        if (process < 0)
            throw std::runtime_error("no more processes");
    }
    ~Program()
    {
        ::kill(-process, SIGKILL);
        ::waitpid(process, nullptr, 0);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    double SecondsTo(Clock::time_point time) const
    {
        return time == Clock::time_point() ? NAN : std::chrono::duration<double>(time - started).count();
    }
    pid_t Process() const { return process; }

private:
    Clock::time_point started;
    pid_t process;
};

bool IsColourful(uint32_t pixel)
{
    const int red = pixel >> 16 & 255;
    const int green = pixel >> 8 & 255;
    const int blue = pixel & 255;
    return std::max({red, green, blue}) - std::min({red, green, blue}) >= kColourful;
}

void Start(char** words)
{
    ScreenWatch screen;
    const Program program(words);
    screen.WatchUntilQuiet(kQuiet, kLongest);
    const uint32_t background = screen.Background();
    const double drawn = program.SecondsTo(screen.DoneSince([=](uint32_t pixel) { return pixel != background; }));
    const double coloured = program.SecondsTo(screen.DoneSince(&IsColourful));
    const double shown = program.SecondsTo(screen.Shown());
    if (std::isnan(shown) || std::isnan(drawn))
        throw std::runtime_error("no window was drawn");
    std::printf(R"({"shown": %.4f, "drawn": %.4f, "coloured": %.4f, "pixels": %ld})"
                "\n",
                shown, drawn, std::isnan(coloured) ? -1 : std::max(drawn, coloured), screen.Changed());
}

// Counts how often a thread stopped waiting. Threads that started or ended meanwhile count as woken.
long WakeUps(pid_t process)
{
    long count = 0;
    for (const auto& task : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
        std::ifstream status(task.path() / "status");
        for (std::string word; status >> word;)
            if (word == "voluntary_ctxt_switches:" && status >> word)
                count += std::stol(word);
    }
    return count;
}

long WakeUpsDuring(const Program& program, seconds time)
{
    const long before = WakeUps(program.Process());
    std::this_thread::sleep_for(time);
    return WakeUps(program.Process()) - before;
}

void Idle(seconds time, char** words)
{
    ScreenWatch screen;
    const Program program(words);
    screen.WatchUntilQuiet(kQuiet, kLongest);
    const long focused = WakeUpsDuring(program, time);
    screen.TakeFocus();
    screen.WatchUntilQuiet(kQuiet, kLongest);
    std::printf(R"({"focused": %ld, "unfocused": %ld})"
                "\n",
                focused, WakeUpsDuring(program, time));
}

// With pauses, so that the screen is quiet before each key, and never in step with the caret.
void Keys(int count, char** words)
{
    ScreenWatch screen;
    const Program program(words);
    screen.WatchUntilQuiet(kQuiet, kLongest);
    std::vector<double> taken;
    for (int i = 0; i < count; ++i) {
        std::this_thread::sleep_for(milliseconds(60 + i % 7));
        screen.ForgetDrawing();
        const auto start = Clock::now();
        screen.Strike(kTyped[static_cast<size_t>(i) % kTyped.size()]);
        const auto drawn = screen.WaitForDrawing(seconds(5));
        if (drawn == Clock::time_point())
            throw std::runtime_error("a key had no effect");
        taken.push_back(std::chrono::duration<double, std::milli>(drawn - start).count());
    }
    std::ranges::sort(taken);
    std::printf(R"({"median": %.3f, "p99": %.3f, "worst": %.3f})"
                "\n",
                taken[taken.size() / 2], taken[taken.size() * 99 / 100], taken.back());
}

int Run(int count, char** words)
{
    const std::string what = count > 1 ? words[1] : "";
    if (what == "start" && count > 2)
        Start(words + 2);
    else if (what == "idle" && count > 3)
        Idle(seconds(std::atol(words[2])), words + 3);
    else if (what == "keys" && count > 3)
        Keys(std::max(1, std::atoi(words[2])), words + 3);
    else
        return 2;
    return 0;
}

} // namespace

} // namespace wren::bench

int main(int count, char** words)
{
    try {
        const int status = wren::bench::Run(count, words);
        if (status != 0)
            std::fputs("usage: window_watch start|idle SECONDS|keys COUNT PROGRAM WORDS...\n", stderr);
        return status;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "window_watch: %s\n", error.what());
        return 1;
    }
}
