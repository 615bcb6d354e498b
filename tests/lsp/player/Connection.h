// A running server, and messages to and from it.
#pragma once

#include <chrono>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

// One thread. Nothing is sent while a message is received: the server must take what is sent without being read.
class Connection {
public:
    // 'errors' takes the server's standard error; -1 for the caller's own. Throws.
    Connection(const std::vector<std::string>& command, const std::string& directory, int errors = -1);
    ~Connection();

    void Send(const nlohmann::json& message);
    void SendBytes(const std::string& bytes);
    // Sends as much as the server takes before it takes nothing for this long; returns the number of bytes.
    size_t SendSome(const std::string& bytes, std::chrono::milliseconds longestPause);
    static std::string Framed(const nlohmann::json& message);
    void CloseInput();
    pid_t Process() const { return process; }
    void Signal(int number) const;

    // Nullopt at the end of the output, or when nothing comes in time: IsAtEnd() tells which. Throws when the framing
    // is wrong.
    std::optional<nlohmann::json> Receive(std::chrono::milliseconds longest);
    std::optional<std::string> ReceiveText(std::chrono::milliseconds longest); // the same, unread: for large messages
    bool IsAtEnd() const { return atEnd; }
    int WaitForExit(std::chrono::milliseconds longest); // the exit status; throws when it does not end

private:
    bool ReadMore(std::chrono::steady_clock::time_point limit);
    std::optional<std::string> Take();

    pid_t process = -1;
    int input = -1;  // of the server
    int output = -1; // of the server
    std::string buffer;
    bool atEnd = false;
};
