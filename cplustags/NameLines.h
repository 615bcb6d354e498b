// The lines of a list of names, as they come, with a look at those ahead.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>

namespace cplustags {

// Whoever writes the list may be at it still. Not thread-safe.
class NameLines {
public:
    // Reads from the descriptor, which stays the caller's; -1 is an empty list. While there is nothing to read 'goOn'
    // is called about ten times a second, and the list ends when it says false.
    NameLines(int descriptor, std::function<bool()> goOn);

    // Whether there is a line 'index' places behind the current one; waits for it. The last line need not have a break.
    bool Has(size_t index);
    const std::string& At(size_t index) const { return lines[index]; } // that Has() has said to be there
    void Drop(size_t count);

    const std::string& Error() const { return error; } // why reading ended before the list did; "" when it did not

private:
    void Read();
    void Split(const char* text, size_t size);
    void Append(const char* text, size_t size);

    const int descriptor;
    const std::function<bool()> goOn;
    std::deque<std::string> lines;
    std::string unfinished;
    std::string error;
    bool atEnd;
};

} // namespace cplustags
