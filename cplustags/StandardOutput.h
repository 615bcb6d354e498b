// Standard output, with a buffer.
#pragma once

#include <string>
#include <string_view>

namespace cplustags {

// Not thread-safe. Once the program is interrupted it gives up waiting for who reads; when nobody does any more, it is
// interrupted by SIGPIPE.
class StandardOutput {
public:
    bool Write(std::string_view text); // false as soon as a write has failed
    bool Flush();                      // at the end; false, with errno set, when not all has been written

private:
    std::string buffer;
    bool failed = false;
};

} // namespace cplustags
