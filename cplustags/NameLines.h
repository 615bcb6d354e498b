// The lines of a list of names as they arrive, with lookahead.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>

namespace cplustags {

// The list may still be growing. Not thread-safe.
class NameLines {
public:
    // Reads from the descriptor, which stays the caller's; -1 is an empty list. While there is nothing to read, it
    // calls 'goOn' about ten times a second; the list ends when that returns false.
    NameLines(int descriptor, std::function<bool()> goOn);

    // Whether the line at 'index' after the current one exists; blocks until it is known. The last line needs no line
    // break.
    bool Has(size_t index);
    const std::string& At(size_t index) const { return lines[index]; } // only after Has() returned true
    void Drop(size_t count);

    const std::string& Error() const { return error; } // why the list could not be read to its end; "" if it could

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
