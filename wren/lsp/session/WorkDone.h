// Work that the user sees in the editor, and can end ("$/progress", "window/workDoneProgress").
#pragma once

#include "wren/lsp/session/Client.h"
#include "wren/projects/Project.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace wren::lsp {

// Any thread. The client is borrowed.
class WorkDone : public ShownWork, public std::enable_shared_from_this<WorkDone> {
public:
    // Asks the client to show it. Begin, reports and end are sent once it agrees, and never if it refuses.
    static std::shared_ptr<WorkDone> Create(Client& client, std::string token, std::string title);

    // Few of many reports are sent. Percentages never fall.
    void Report(const std::string& message, size_t done, size_t known) override;
    void End(const std::string& message) override;

private:
    WorkDone(Client& client, std::string token, std::string title)
        : client(client), token(std::move(token)), title(std::move(title))
    {
    }
    void Answered(bool isAccepted);
    void Send(const char* kind, const std::string& message, std::optional<unsigned> percentage);

    Client& client;
    const std::string token;
    const std::string title;
    std::mutex mutex; // guards the members below
    enum class State { Asked, Shown, Refused, Ended } state = State::Asked;
    std::optional<std::string> end; // came before the client's answer
    unsigned percentage = 0;
    std::chrono::steady_clock::time_point last; // report
};

} // namespace wren::lsp
