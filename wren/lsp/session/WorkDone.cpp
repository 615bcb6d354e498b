#include "wren/lsp/session/WorkDone.h"

#include <algorithm>
#include <utility>

namespace wren::lsp {

std::shared_ptr<WorkDone> WorkDone::Create(Client& client, std::string token, std::string title)
{
    std::shared_ptr<WorkDone> work(new WorkDone(client, std::move(token), std::move(title)));
    client.Ask("window/workDoneProgress/create", {{"token", work->token}},
               [work](const Json* result) { work->Answered(result != nullptr); });
    return work;
}

void WorkDone::Send(const char* kind, const std::string& message, std::optional<unsigned> shown)
{
    Json value = {{"kind", kind}};
    if (!message.empty())
        value["message"] = message;
    if (shown)
        value["percentage"] = *shown;
    if (std::string_view(kind) == "begin")
        value.update({{"title", title}, {"cancellable", true}});
    client.Notify("$/progress", {{"token", token}, {"value", value}});
}

void WorkDone::Answered(bool isAccepted)
{
    const std::lock_guard lock(mutex);
    if (state != State::Asked)
        return;
    state = isAccepted ? State::Shown : State::Refused;
    if (!isAccepted)
        return;
    Send("begin", "", 0);
    if (end) {
        Send("end", *end, std::nullopt);
        state = State::Ended;
    }
}

void WorkDone::Report(const std::string& message, size_t done, size_t known)
{
    constexpr std::chrono::milliseconds kPause(100);
    const std::lock_guard lock(mutex);
    const auto now = std::chrono::steady_clock::now();
    if (state != State::Shown || now - last < kPause)
        return;
    last = now;
    if (known > 0)
        percentage = std::max(percentage, static_cast<unsigned>(std::min(done, known) * 100 / known));
    Send("report", message, percentage);
}

void WorkDone::End(const std::string& message)
{
    const std::lock_guard lock(mutex);
    if (state == State::Shown) {
        Send("end", message, std::nullopt);
        state = State::Ended;
    } else if (state == State::Asked && !end) {
        end = message;
    }
}

} // namespace wren::lsp
