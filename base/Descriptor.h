// A file descriptor that is closed when its owner goes.
#pragma once

#include <unistd.h>
#include <utility>

namespace base {

// Owns the descriptor; movable. One below 0 stands for none. Not thread-safe. errno stays as it is at destruction, so
// that a function can return with the reason of a failure.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number(number) {}
    Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number, other.number);
        return *this;
    }
    ~Descriptor();

    int Number() const { return number; }
    bool IsOpen() const { return number >= 0; }
    bool Close(); // true as well when there is none; false, with errno, when what was written is lost
    int Release() { return std::exchange(number, -1); } // the caller's to close from now on

private:
    int number;
};

} // namespace base
