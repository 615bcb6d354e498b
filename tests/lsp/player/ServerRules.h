// What holds for every message of a server, whatever the session.
#pragma once

#include "Structure.h"

#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

// Sees all messages in their order, and throws std::runtime_error with the rule that a message of the server breaks:
// its structure, answers that nobody asked for, what may be sent when, and progress that begins, rises and ends.
class ServerRules {
public:
    explicit ServerRules(const Structure& structure) : structure(structure) {} // borrowed

    void Sent(const nlohmann::json& message);
    void Received(const nlohmann::json& message);
    // At the end of a session that was shut down: each request has its answer, each progress its end.
    void Ended() const;

private:
    void Answered(const nlohmann::json& message);
    void Asked(const nlohmann::json& message);
    void Notified(const nlohmann::json& message);
    void Progressed(const nlohmann::json& params);
    void Check(const std::string& name, const nlohmann::json& value) const;

    struct Progress {
        bool begun = false;
        bool ended = false;
        unsigned percentage = 0;
    };
    const Structure& structure;
    std::map<std::string, std::string> open;  // the client's requests without an answer: id, method
    std::map<std::string, std::string> asked; // the server's: id, the token that it would create
    std::set<std::string> ids;                // of all the server's requests
    std::map<std::string, Progress> progress; // by token
    bool isInitialized = false;               // "initialize" is answered
    bool hasBegun = false;                    // "initialized" is sent
};
