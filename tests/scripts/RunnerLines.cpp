#include "RunnerLines.h"

#include "SessionFiles.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::seconds kLongestWait(60);
constexpr std::chrono::milliseconds kLookAgain(1);

void Demand(bool done, const std::string& what)
{
    if (!done)
        throw std::runtime_error(what);
}

// Held as file servers hold what somebody else is to open: the system has that one wait for us, for up to 45 seconds.
// It tells us by a signal, which by default ends the process; this one is ignored by default.
int TakeLease(const fs::path& file)
{
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    Demand(descriptor >= 0 && ::fcntl(descriptor, F_SETSIG, SIGURG) == 0 &&
               ::fcntl(descriptor, F_SETLEASE, F_WRLCK) == 0,
           "cannot hold " + file.string());
    return descriptor;
}

void WaitForReader(const fs::path& file, int descriptor)
{
    const auto end = std::chrono::steady_clock::now() + kLongestWait;
    while (::fcntl(descriptor, F_GETLEASE) == F_WRLCK) {
        Demand(std::chrono::steady_clock::now() < end, "nobody reads " + file.string());
        std::this_thread::sleep_for(kLookAgain);
    }
}

} // namespace

bool RunnerLines::IsOne(const std::string& line)
{
    const Line value = Line::parse(line, nullptr, false);
    return value.is_object() && value.contains("runner");
}

void RunnerLines::Carry(const std::string& text)
{
    const Line line = Line::parse(text);
    const std::string what = line.at("runner");
    const fs::path file = line.at("path").get<std::string>();
    if (what == "write")
        WriteFile(line);
    else if (what == "touch")
        SetAge(file, Age::Newest);
    else if (what == "remove")
        Demand(fs::remove(file), "nothing to remove: " + file.string());
    else if (what == "hold")
        Hold(file);
    else if (what == "release")
        Release(file);
    else
        throw std::runtime_error("unknown line for the runner: " + text);
}

bool RunnerLines::LetGo()
{
    const bool none = held.empty();
    for (const auto& [file, descriptor] : held)
        ::close(descriptor); // and with it what it holds
    held.clear();
    return none;
}

// A new file takes the place of the old one, as programs that write tags do it.
void RunnerLines::WriteFile(const Line& line)
{
    const fs::path file = line.at("path").get<std::string>();
    fs::path beside = file;
    beside += ".new";
    fs::create_directories(file.parent_path());
    Write(beside, line.at("text"));
    SetAge(beside, AgeNamed(line.value("time", "newer")));
    fs::rename(beside, file);
}

void RunnerLines::Hold(const fs::path& file)
{
    held[file] = TakeLease(file);
}

void RunnerLines::Release(const fs::path& file)
{
    const auto found = held.find(file);
    Demand(found != held.end(), "not held: " + file.string());
    WaitForReader(file, found->second);
    ::close(found->second);
    held.erase(found);
}
