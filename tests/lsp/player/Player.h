// Plays a session: does and sends what the client's lines say, and compares what the server sends with its lines.
#pragma once

#include "Connection.h"
#include "ServerRules.h"
#include "Stage.h"
#include "Transcript.h"

#include <deque>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

class Player {
public:
    Player(std::string program, const Structure& structure) : program(std::move(program)), rules(structure) {}

    // Throws std::runtime_error with what differs.
    void Play(const TranscriptLine& line);
    void Finish(); // shuts the server down and waits for its end, unless the session did that

private:
    using Json = nlohmann::json;

    void Start();
    void Begin(const std::string& rest);
    void Send(const Json& message);
    void SendParams(const std::string& rest, bool isRequest);
    Json Params(const std::string& words) const;
    void Open(const std::string& rest);
    void Change(const std::string& rest);
    void Answer(const Json& answer);
    void SendBody(const std::string& body);
    void Rename(const std::string& rest) const;
    std::string Content(const std::string& file) const;

    void ExpectAnswer(const std::string& rest, const char* member);
    void ExpectMessage(const std::string& rest, bool isRequest);
    void ExpectNone(const std::string& rest);
    void ExpectExit(const std::string& rest);

    bool Receive(); // one message, into 'answers' or 'others'; false at the end of the output
    void AnswerByItself(const Json& request);
    Json WaitForAnswer(const Json& id);

    const std::string program;
    ServerRules rules;
    Stage stage;
    std::string arguments;
    std::vector<std::pair<std::string, std::string>> environment;
    std::optional<Connection> server;
    int lastId = 0;
    std::string repeated;                            // the request that is sent until its answer fits; "" for none
    std::map<std::string, int> versions;             // of open texts
    std::map<std::string, Json> automatic;           // answers to the server's requests, by method; null for all others
    std::set<std::string> byHand;                    // methods that the session itself answers
    std::map<std::string, std::deque<Json>> answers; // by id
    std::deque<Json> others;                         // notifications and requests, which no line has taken yet
    Json taken;                                      // the id of the server's request that was taken last
    bool isShutDown = false;
    bool hasEnded = false;
};
