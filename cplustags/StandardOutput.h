// Buffered standard output.
#pragma once

#include <string>
#include <string_view>

namespace cplustags {

// Not thread-safe. After an interrupt it stops waiting for the reader; without a reader, it interrupts the program with
// SIGPIPE.
class StandardOutput {
public:
    bool Write(std::string_view text); // false as soon as a write has failed
    bool Flush();                      // call it at the end; false, with errno, if not everything was written

private:
    std::string buffer;
    bool failed = false;
};

} // namespace cplustags
