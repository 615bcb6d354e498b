// The language server: reads messages and answers them (Language Server Protocol 3.17, JSON-RPC 2.0).
#pragma once

#include "wren/lsp/features/Methods.h"
#include "wren/lsp/protocol/MessageReader.h"
#include "wren/lsp/protocol/Outbox.h"
#include "wren/lsp/session/Client.h"
#include "wren/lsp/session/Session.h"
#include "wren/lsp/session/Workers.h"

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace wren::lsp {

// Used by one thread, which reads messages and hands requests to workers.
class Server {
public:
    // Borrows all. 'stop' ends it; the server cancels it itself when the client's process is gone.
    Server(int input, int output, SessionOptions options, base::CancelToken& stop);

    int Run(); // until the client ends it or is gone; the program's exit status

private:
    enum class State { Before, Running, ShutDown };
    struct Request {
        Json id;
        base::CancelToken cancel;
    };
    using RequestPointer = std::shared_ptr<Request>;

    bool HasRoom();
    void Take(const std::string& body);
    void TakeMessage(const Json& message);
    void TakeRequest(const Json& message);
    void TakeNotification(const std::string& method, const Json& params);
    void Initialize(const Json& id, const Json& params);
    void Start(const std::string& method, const Json& id, const Json& params);
    void Work(Handler handler, const Json& params, const RequestContext& context, const RequestPointer& request);
    bool Claim(const RequestPointer& request);
    void AnswerShutdown();
    void ShutDown(const Json& id);
    void Cancel(const Json& params);
    void CancelAll();
    void End();
    void Answer(const Json& id, const Json& result);
    void Refuse(const Json& id, FailureCode code, const std::string& why);

    const int input;
    base::CancelToken& stop;
    MessageReader reader;
    Outbox outbox;
    Client client;
    std::optional<Session> session; // until the end of Run()
    State state = State::Before;
    bool ended = false;
    std::mutex mutex;                           // guards the next members
    std::map<std::string, RequestPointer> open; // requests without an answer, by their id as text
    std::optional<Json> shutdown;               // the id of that request, until it is answered
    Workers longWorkers;                        // for what waits for an index
    Workers workers;                            // the first to go
};

} // namespace wren::lsp
