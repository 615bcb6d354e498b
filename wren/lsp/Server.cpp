#include "wren/lsp/Server.h"

#include "wren/lsp/LastResort.h"

#include <chrono>
#include <exception>
#include <utility>

namespace wren::lsp {

namespace {

constexpr size_t kWorkers = 4;
constexpr size_t kMostWaiting = 200; // requests; then no more are read until some are answered

bool IsId(const Json& id)
{
    return id.is_number_integer() || id.is_string();
}

} // namespace

Server::Server(int input, int output, SessionOptions options, base::CancelToken& stop)
    : input(input), stop(stop), reader(input, &stop), outbox(output), client(outbox),
      session(std::in_place, std::move(options), client, stop), longWorkers(2), workers(kWorkers)
{
}

// A client that floods the server, or does not read its answers, is read more slowly.
bool Server::HasRoom()
{
    while (outbox.WaitForRoom(input, stop)) {
        if (workers.Waiting() <= kMostWaiting)
            return true;
        workers.WaitForOne();
    }
    return false;
}

int Server::Run()
{
    while (!ended && HasRoom()) {
        std::string body;
        const MessageReader::Outcome outcome = reader.Read(body);
        if (outcome == MessageReader::Outcome::Broken)
            client.Log(MessageType::Error, reader.Problem() + "; the server ends");
        if (outcome != MessageReader::Outcome::Message)
            break;
        Take(body);
    }
    const int status = state == State::ShutDown ? 0 : 1;
    const LastResort lastResort(status);
    End();
    return status;
}

void Server::End()
{
    CancelAll();
    session->Stop();
    workers.WaitUntilIdle();
    longWorkers.WaitUntilIdle();
    session.reset(); // waits for the indexing, which ends what it shows of its progress
    constexpr std::chrono::seconds kLongestFarewell(1);
    outbox.Finish(kLongestFarewell);
}

void Server::Take(const std::string& body)
{
    const Json message = ParsedMessage(body);
    if (message.is_discarded())
        return Refuse(nullptr, FailureCode::ParseError, "the message is not JSON");
    const Json given = message.is_object() ? message.value("id", Json()) : Json();
    const Json id = IsId(given) ? given : Json();
    if (!message.is_object() || message.value("jsonrpc", Json()) != "2.0")
        return Refuse(id, FailureCode::InvalidRequest, "the message is not JSON-RPC 2.0");
    if (!message.contains("method") && (message.contains("result") || message.contains("error")))
        return client.TakeAnswer(message);
    if (!message.contains("method") || !message["method"].is_string() || (message.contains("id") && id.is_null()))
        return Refuse(id, FailureCode::InvalidRequest, "the method or the id cannot be used");
    try {
        TakeMessage(message);
    } catch (const Failure& failure) {
        if (!id.is_null())
            return Refuse(id, failure.code, failure.what());
        client.Log(MessageType::Warning, message["method"].get<std::string>() + ": " + failure.what());
    }
}

void Server::TakeMessage(const Json& message)
{
    if (message.contains("id"))
        TakeRequest(message);
    else
        TakeNotification(message["method"], message.value("params", Json::object()));
}

void Server::TakeRequest(const Json& message)
{
    const std::string method = message["method"];
    const Json& id = message["id"];
    const Json params = message.value("params", Json::object());
    if (state == State::ShutDown)
        return Refuse(id, FailureCode::InvalidRequest, "the server has been shut down");
    if (state == State::Before && method != "initialize")
        return Refuse(id, FailureCode::ServerNotInitialized, "the server is not initialized");
    if (state == State::Running && method == "initialize")
        return Refuse(id, FailureCode::InvalidRequest, "the server is initialized already");
    if (method == "shutdown")
        return ShutDown(id);
    if (method == "initialize")
        return Initialize(id, params);
    Start(method, id, params);
}

void Server::Initialize(const Json& id, const Json& params)
{
    session->Initialize(params);
    state = State::Running;
    Answer(id, {{"capabilities", ServerCapabilities(session->Abilities())},
                {"serverInfo", {{"name", "wren"}, {"version", WREN_VERSION}}}});
}

void Server::TakeNotification(const std::string& method, const Json& params)
{
    if (method == "exit")
        ended = true;
    else if (state != State::Running)
        return;
    else if (method == "$/cancelRequest")
        Cancel(params);
    else
        session->Take(method, params);
}

void Server::Start(const std::string& method, const Json& id, const Json& params)
{
    const Handler handler = HandlerOf(method);
    if (handler == nullptr)
        return Refuse(id, FailureCode::MethodNotFound, "'" + method + "' is not known");
    const bool isLong = IsLong(method, params);
    if (isLong && longWorkers.Waiting() > kMostWaiting)
        return Refuse(id, FailureCode::RequestFailed, "too many commands wait already");
    auto request = std::make_shared<Request>();
    request->id = id;
    {
        const std::lock_guard lock(mutex);
        if (!open.try_emplace(id.dump(), request).second)
            return Refuse(id, FailureCode::InvalidRequest, "a request with this id has no answer yet");
    }
    (isLong ? longWorkers : workers)
        .Add([this, handler, params, request, context = session->ContextFor(request->cancel, params)] {
            Work(handler, params, context, request);
        });
}

void Server::Work(Handler handler, const Json& params, const RequestContext& context, const RequestPointer& request)
{
    try {
        outbox.WaitForRoom(request->cancel); // the answers to all requests that wait would take much memory
        context.CheckCancelled();
        const Json result = handler(params, context);
        context.CheckCancelled(); // then the result may not be complete
        if (Claim(request))
            Answer(request->id, result);
    } catch (const Failure& failure) {
        if (Claim(request))
            Refuse(request->id, failure.code, failure.what());
    } catch (const std::exception& problem) { // out of memory
        if (Claim(request))
            Refuse(request->id, FailureCode::InternalError, problem.what());
    }
    AnswerShutdown();
}

// Whoever claims a request answers it: its worker, or the one that takes its cancelling.
bool Server::Claim(const RequestPointer& request)
{
    const std::lock_guard lock(mutex);
    const auto found = open.find(request->id.dump());
    if (found == open.end() || found->second != request)
        return false;
    open.erase(found);
    return true;
}

// Once all requests before it are answered.
void Server::AnswerShutdown()
{
    std::optional<Json> id;
    {
        const std::lock_guard lock(mutex);
        if (open.empty())
            id.swap(shutdown);
    }
    if (id)
        Answer(*id, nullptr);
}

void Server::ShutDown(const Json& id)
{
    state = State::ShutDown;
    session->Close();
    {
        const std::lock_guard lock(mutex);
        shutdown = id;
    }
    longWorkers.Add([this] { AnswerShutdown(); });
}

void Server::Cancel(const Json& params)
{
    RequestPointer request;
    {
        const std::lock_guard lock(mutex);
        if (const auto found = open.find(Member<Json>(params, "id").dump()); found != open.end())
            request = found->second;
    }
    if (request == nullptr)
        return;
    request->cancel.Cancel();
    if (Claim(request))
        Refuse(request->id, FailureCode::RequestCancelled, "the client has cancelled this");
}

void Server::CancelAll()
{
    const std::lock_guard lock(mutex);
    for (const auto& [id, request] : open)
        request->cancel.Cancel();
}

void Server::Answer(const Json& id, const Json& result)
{
    outbox.Send({{"jsonrpc", "2.0"}, {"id", id}, {"result", result}});
}

void Server::Refuse(const Json& id, FailureCode code, const std::string& why)
{
    outbox.Send({{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", static_cast<int>(code)}, {"message", why}}}});
}

} // namespace wren::lsp
