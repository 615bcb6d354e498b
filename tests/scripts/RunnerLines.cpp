#include "RunnerLines.h"

#include "SessionFiles.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
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

// The writing end of a pipe that somebody has opened for reading, or is about to.
int OpenForReader(const fs::path& pipe)
{
    const auto end = std::chrono::steady_clock::now() + kLongestWait;
    int descriptor;
    while ((descriptor = ::open(pipe.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC)) < 0 && errno == ENXIO) {
        Demand(std::chrono::steady_clock::now() < end, "nobody reads " + pipe.string());
        std::this_thread::sleep_for(kLookAgain);
    }
    Demand(descriptor >= 0, "cannot open " + pipe.string());
    ::fcntl(descriptor, F_SETFL, 0); // waits for the reader to take more
    return descriptor;
}

void Feed(int descriptor, const std::string& text)
{
    size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = ::write(descriptor, text.data() + written, text.size() - written);
        if (count <= 0)
            break; // the reader wants no more
        written += static_cast<size_t>(count);
    }
    ::close(descriptor);
}

void CopyAge(const fs::path& from, const fs::path& to)
{
    fs::last_write_time(to, fs::last_write_time(from));
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
    for (const auto& [file, place] : held) {
        // With both ends open nobody waits any more; with both closed again the reader has come to the end.
        ::close(::open(file.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
        fs::rename(place, file);
    }
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

// A pipe of the same age stands in for the file: who opens it waits until there is something to read.
void RunnerLines::Hold(const fs::path& file)
{
    const fs::path place = aside / ("held-" + std::to_string(++holds));
    fs::path pipe = place;
    pipe += ".pipe";
    Demand(::mkfifo(pipe.c_str(), 0600) == 0, "cannot make " + pipe.string());
    CopyAge(file, pipe);
    fs::rename(file, place);
    fs::rename(pipe, file);
    held[file] = place;
}

// The file is back in its place before its reader, who has the pipe, gets to read: nobody else can meet the pipe then.
void RunnerLines::Release(const fs::path& file)
{
    const auto found = held.find(file);
    Demand(found != held.end(), "not held: " + file.string());
    const std::string text = Read(found->second);
    const int reader = OpenForReader(file);
    fs::rename(found->second, file);
    held.erase(found);
    Feed(reader, text);
}
