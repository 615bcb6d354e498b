// Reports from the tagging of files to the program.
#pragma once

#include <cstddef>
#include <string>

namespace tagging {

class Observer {
public:
    virtual ~Observer() = default;

    // A message for the user that does not end the work, such as a file that is left out and why. One or more lines,
    // without the last line break. Any thread.
    virtual void Say(const std::string& message) = 0;

    // The number of files done, and of files known so far. Called often, on the thread that uses the tagger.
    virtual void Show(size_t done, size_t known) = 0;
};

} // namespace tagging
