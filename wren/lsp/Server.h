// The language server: reads messages and answers them (Language Server Protocol 3.17, JSON-RPC 2.0).
#pragma once

#include "wren/lsp/protocol/MessageReader.h"
#include "wren/lsp/protocol/Outbox.h"
#include "wren/lsp/session/Client.h"
#include "wren/lsp/session/Session.h"
#include "wren/lsp/session/Workers.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace wren::lsp {

// Used by one thread, which reads messages and hands requests to workers.
class Server {
public:
    Server(int input, int output, SessionOptions options); // borrows the descriptors

    int Run(); // until the client ends it or is gone; the program's exit status

private:
    enum class State { Before, Running, ShutDown };
    using CancelPointer = std::shared_ptr<base::CancelToken>;

    void Take(const std::string& body);
    void TakeRequest(const Json& message);
    void TakeNotification(const std::string& method, const Json& params);
    void Start(const std::string& method, const Json& id, const Json& params);
    void ShutDown(const Json& id);
    void Cancel(const Json& params);
    void Answer(const Json& id, const Json& result);
    void Refuse(const Json& id, FailureCode code, const std::string& why);

    MessageReader reader;
    Outbox outbox;
    Client client;
    Session session;
    State state = State::Before;
    bool ended = false;
    std::mutex mutex;                             // guards the next member
    std::map<std::string, CancelPointer> running; // requests, by their id as text
    Workers workers;                              // the first to go
};

} // namespace wren::lsp
