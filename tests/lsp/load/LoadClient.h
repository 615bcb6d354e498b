// A client that puts a server under load.
#pragma once

#include "tests/lsp/player/Connection.h"
#include "tests/support/TempDirectory.h"

#include <string>

// One server in the folder "tree" of a directory, with a cache in that directory. Throws when the server does not
// answer in time, or refuses.
class LoadClient {
public:
    static constexpr std::chrono::seconds kLongest{120}; // only failures wait that long

    // 'errors' as Connection has it.
    explicit LoadClient(const TempDirectory& directory, int errors = -1);

    // "initialize" and its answer, "initialized".
    void Begin(const nlohmann::json& capabilities = nlohmann::json::object());
    int End(); // the exit status

    std::string Uri(const std::string& file) const { return root + "/" + file; }
    void Tell(const char* method, const nlohmann::json& params);
    nlohmann::json Ask(const char* method, const nlohmann::json& params);                  // the result
    int Request(const char* method, const nlohmann::json& params);                         // its id; does not wait
    nlohmann::json WaitForAnswer(int id);                                                  // the result
    void Open(const std::string& uri, const std::string& text);                            // in C
    void Replace(const std::string& uri, long version, int line, const std::string& text); // the whole line

    long Memory();     // of the server alone, swapped or not, in kilobytes
    long PeakMemory(); // the most that it ever held in memory, in kilobytes
    Connection& Server() { return server; }

    static nlohmann::json Notification(const char* method, const nlohmann::json& params);

private:
    const std::string root;
    Connection server;
    int lastId = 0;
};
