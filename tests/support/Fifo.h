// Lets a test wait for a program that it has started.
#pragma once

#include "tests/support/TempDirectory.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

// A named pipe for the test and, by its path, for programs.
class Fifo {
public:
    Fifo() : path(directory / "fifo")
    {
        ::mkfifo(path.c_str(), 0600);
        descriptor = ::open(path.c_str(), O_RDWR | O_CLOEXEC); // both ends, so that opening does not wait
    }
    ~Fifo() { ::close(descriptor); }
    Fifo(const Fifo&) = delete;
    Fifo& operator=(const Fifo&) = delete;

    const std::string& Path() const { return path; }

    // The next line that a program writes, without its end; a part of it if the process ends first.
    std::string ReadLine(pid_t process) const
    {
        const int end = static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
        std::string line;
        for (char c = 0; WaitForByte(end) && ::read(descriptor, &c, 1) == 1 && c != '\n';)
            line += c;
        ::close(end);
        return line;
    }

    void WriteLine(const std::string& line) const
    {
        const std::string text = line + "\n";
        if (::write(descriptor, text.data(), text.size()) < 0)
            ::perror("Fifo");
    }

private:
    bool WaitForByte(int end) const
    {
        pollfd sources[] = {{descriptor, POLLIN, 0}, {end, POLLIN, 0}};
        while (::poll(sources, 2, -1) < 0 && errno == EINTR)
            continue;
        return (sources[0].revents & POLLIN) != 0;
    }

    const TempDirectory directory;
    const std::string path;
    int descriptor;
};
