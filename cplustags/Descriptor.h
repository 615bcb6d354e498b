// A file descriptor that is closed when its owner goes.
#pragma once

#include <unistd.h>
#include <utility>

namespace cplustags {

class Descriptor {
public:
    explicit Descriptor(int number = -1) : number(number) {}
    Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number, other.number);
        return *this;
    }
    ~Descriptor() { Close(); }

    int Number() const { return number; }
    bool IsOpen() const { return number >= 0; }
    void Close()
    {
        if (number >= 0)
            ::close(std::exchange(number, -1));
    }

private:
    int number;
};

} // namespace cplustags
