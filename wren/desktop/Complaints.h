// What the framework complains of, brought to the user.
#pragma once

#include "wren/desktop/display/UpdateQueue.h"

#include <functional>
#include <string>

namespace wren {

// As long as one lives, complaints of all threads wait for Take(), and the loop is woken for them. One at a time; made
// and destroyed on the GUI thread.
class Complaints {
public:
    explicit Complaints(std::function<void(const std::string& text)> tell);
    ~Complaints();
    Complaints(const Complaints&) = delete;
    Complaints& operator=(const Complaints&) = delete;

    void Take(); // tells what has come. GUI thread

private:
    const std::function<void(const std::string&)> tell;
    UpdateQueue queue;
};

} // namespace wren
