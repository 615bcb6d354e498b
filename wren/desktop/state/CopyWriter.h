// Writes copies of texts to the disk behind the user's back.
#pragma once

#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace wren {

// One thread does the writing, which waits for the disk, so that typing never does. There is none while nothing is to
// be written; when the system has none to give, the caller's thread writes. A file's newest content is all that counts:
// what was still waiting for it is passed over. Belongs to one thread.
class CopyWriter {
public:
    using OnWritten = std::function<void(const std::string& file, const std::string& problem)>; // "" for none

    explicit CopyWriter(OnWritten onWritten = {}); // called on the thread that writes
    ~CopyWriter();                                 // once all is done
    CopyWriter(const CopyWriter&) = delete;
    CopyWriter& operator=(const CopyWriter&) = delete;

    void Write(const std::string& file, std::string head, std::string text); // one behind the other
    void Remove(const std::string& file);
    void Finish(); // comes back when all is done

private:
    struct Copy {
        std::string head;
        std::string text;
    };
    using Wish = std::optional<Copy>; // none: no file

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
