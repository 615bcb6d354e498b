// Reads a text as soon as it is opened or changed: the question that usually follows finds it parsed.
#pragma once

#include "wren/projects/Project.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace wren {

// Any thread.
class EarlyReader {
public:
    EarlyReader();
    ~EarlyReader(); // waits for the text that it reads

    // Of several texts that come while one is read, the last one is read.
    void TextChanged(std::shared_ptr<Project> project, std::string path, OpenText text);

private:
    void Run();

    struct Work {
        std::shared_ptr<Project> project; // null for none
        std::string path;
        OpenText text;
    };

    std::mutex mutex; // guards the members below
    std::condition_variable changed;
    Work next;
    bool ends = false;
    std::thread thread;
};

} // namespace wren
