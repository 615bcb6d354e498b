// What the tagging of files tells the program around it.
#pragma once

#include <cstddef>
#include <string>

namespace tagging {

class Observer {
public:
    virtual ~Observer() = default;

    // Something that a person should know and that does not end the work: a file that is left out, and why. One line or
    // more, without the last break. Any thread.
    virtual void Say(const std::string& message) = 0;

    // How many files are done, of those known so far. Often; by the thread that uses the tagger.
    virtual void Show(size_t done, size_t known) = 0;
};

} // namespace tagging
