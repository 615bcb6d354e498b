// A file descriptor that its owner closes on destruction.
#pragma once

#include <unistd.h>
#include <utility>

namespace base {

// Owns the descriptor; movable. A negative number means none. Not thread-safe. Destruction keeps errno, so that a
// function can return with the reason of a failure.
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
    bool Close(); // also true without a descriptor; false, with errno, when written data is lost
    int Release() { return std::exchange(number, -1); } // from now on the caller has to close it

private:
    int number;
};

} // namespace base
