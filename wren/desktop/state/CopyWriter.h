// Writes copies of texts to the disk on another thread.
#pragma once

#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace wren {

// One thread writes and waits for the disk, so that typing never waits. The thread exists only while something is to be
// written; when the system cannot start it, the caller's thread writes. Only the newest content of a file counts: an
// older one that still waits is dropped. Belongs to one thread.
class CopyWriter {
public:
    using OnWritten = std::function<void(const std::string& file, const std::string& problem)>; // "" for none

    explicit CopyWriter(OnWritten onWritten = {}); // called on the thread that writes
    ~CopyWriter();                                 // waits until all is written
    CopyWriter(const CopyWriter&) = delete;
    CopyWriter& operator=(const CopyWriter&) = delete;

    void Write(const std::string& file, std::string head, std::string text); // the file is the head, then the text
    void Remove(const std::string& file);
    void Finish(); // returns when all is written

private:
    struct Copy {
        std::string head;
        std::string text;
    };
    using Wish = std::optional<Copy>; // absent: remove the file

    void Add(const std::string& file, Wish wish);
    void Work();
    void Carry(const std::string& file, Wish wish);

    const OnWritten onWritten;
    std::mutex lock; // of all below but the thread
    std::condition_variable idle;
    std::map<std::string, Wish> waiting;
    bool working = false;
    std::thread worker;
};

} // namespace wren
