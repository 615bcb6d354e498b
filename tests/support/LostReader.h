// An output whose reader is gone, as after "| head -1".
#pragma once

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

class LostReader {
public:
    LostReader()
    {
        int ends[2] = {-1, -1};
        if (::pipe2(ends, O_CLOEXEC) == 0)
            ::close(ends[0]);
        output = ends[1];
    }
    ~LostReader() { ::close(output); }
    LostReader(const LostReader&) = delete;
    LostReader& operator=(const LostReader&) = delete;

    int Output() const { return output; } // a descriptor

private:
    int output;
};

// While it lives, programs start with a signal ignored, or with its default action.
class StartedWith {
public:
    StartedWith(int signal, void (*answer)(int)) : signal(signal), before(std::signal(signal, answer)) {}
    ~StartedWith() { std::signal(signal, before); }
    StartedWith(const StartedWith&) = delete;
    StartedWith& operator=(const StartedWith&) = delete;

private:
    const int signal;
    void (*const before)(int);
};
