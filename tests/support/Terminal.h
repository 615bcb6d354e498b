// A terminal for programs that show their progress.
#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <termios.h>
#include <unistd.h>

// A terminal without a user. Written() returns what was written to it.
class Terminal {
public:
    Terminal() : screen(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        EXPECT_EQ(::grantpt(screen), 0);
        EXPECT_EQ(::unlockpt(screen), 0);
        program = ::open(::ptsname(screen), O_RDWR | O_NOCTTY | O_CLOEXEC);
        termios settings;
        ::tcgetattr(program, &settings);
        ::cfmakeraw(&settings);
        ::tcsetattr(program, TCSANOW, &settings);
    }
    ~Terminal()
    {
        ::close(program);
        ::close(screen);
    }

    int Program() const { return program; }
    // The system passes the output on with a delay, so this writes a mark after it and waits for that.
    std::string Written() const
    {
        constexpr char kMark = '\x1';
        EXPECT_EQ(::write(program, &kMark, 1), 1);
        std::string text;
        for (char byte = 0; byte != kMark && ReadByte(byte);)
            text += byte;
        EXPECT_TRUE(text.ends_with(kMark)) << text;
        return text.substr(0, text.size() - 1);
    }

private:
    bool ReadByte(char& byte) const
    {
        constexpr int kLimit = 60'000; // milliseconds
        pollfd waits = {screen, POLLIN, 0};
        return ::poll(&waits, 1, kLimit) == 1 && ::read(screen, &byte, 1) == 1;
    }

    int screen;
    int program;
};
