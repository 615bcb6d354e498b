// What the server says to the client without being asked.
#pragma once

#include "wren/lsp/protocol/Json.h"
#include "wren/lsp/protocol/Outbox.h"

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>

namespace wren::lsp {

enum class MessageType { Error = 1, Warning = 2, Info = 3, Log = 4 }; // the protocol's numbers

// Any thread.
class Client {
public:
    explicit Client(Outbox& outbox) : outbox(outbox) {} // borrowed

    void Notify(const std::string& method, const Json& params);
    void Show(MessageType type, const std::string& text); // the user sees it
    void Log(MessageType type, const std::string& text);  // also on standard error; dropped where nobody reads

    // The answer's result, or null when the client refused. Called on the thread that reads messages; never, when the
    // client does not answer.
    using OnAnswer = std::function<void(const Json* result)>;
    void Ask(const std::string& method, const Json& params, OnAnswer onAnswer);
    void TakeAnswer(const Json& message); // a response that came in

private:
    Outbox& outbox;
    std::mutex mutex; // guards the members below
    std::map<std::int64_t, OnAnswer> asked;
    std::int64_t lastId = 0;
};

} // namespace wren::lsp
