// Clients that do not read, hang, or are gone.
#include "Require.h"
#include "Stories.h"
#include "tests/lsp/load/LoadClient.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using Json = nlohmann::json;

namespace {

using Clock = std::chrono::steady_clock;

// Requests with answers of 450 kB, since each symbol tells the long name of its file. They are long themselves, so that
// few of them fit into a pipe.
class LargeRequests {
public:
    explicit LargeRequests(LoadClient& client) : client(client)
    {
        std::string file;
        for (int directory = 0; directory < 14; ++directory)
            file += std::string(200, 'd') + "/";
        const std::string uri = client.Uri(file + "large.c");
        client.Open(uri, Functions(150));
        SymbolsOf(client, uri);
        for (int request = 0; request < kRequests; ++request) {
            Json message = LoadClient::Notification("textDocument/documentSymbol", {{"textDocument", {{"uri", uri}}}});
            message["id"] = "large" + std::to_string(request);
            message["params"]["padding"] = std::string(8000, ' ');
            rest += Connection::Framed(message);
        }
    }

    // Sends until all is sent, or until the server takes nothing for this long.
    void Send(std::chrono::milliseconds pause) { rest.erase(0, client.Server().SendSome(rest, pause)); }

    // Sends what is left, and reads until all are answered.
    void Finish()
    {
        while (open > 0) {
            Send(std::chrono::milliseconds(0));
            const std::optional<std::string> message = client.Server().ReceiveText(LoadClient::kLongest);
            Require(message.has_value(), "each request is answered");
            if (message->starts_with(R"({"id":"large)"))
                --open;
            Require(message->find(R"("error":)") == std::string::npos, "no request is refused");
        }
    }

    bool HasRest() const { return !rest.empty(); }

private:
    static constexpr int kRequests = 330;

    LoadClient& client;
    std::string rest;
    int open = kRequests;
};

constexpr std::chrono::milliseconds kStopped(1000); // a server that takes nothing for so long has stopped reading

// Waits until no process is left that this one has started, or that those have left behind.
void RequireNoProcesses()
{
    const auto limit = Clock::now() + LoadClient::kLongest;
    for (;;) {
        const pid_t ended = ::waitpid(-1, nullptr, WNOHANG);
        if (ended < 0 && errno == ECHILD)
            return;
        Require(Clock::now() < limit, "all processes end with the client");
        if (ended == 0)
            ::poll(nullptr, 0, 5);
    }
}

// Runs the work in a process; it ends with a signal that kills it.
template <class Work>
void RunKilled(const Work& work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        try {
            work();
        } catch (const std::exception&) {
        }
        ::_exit(1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    Require(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL, "the client came as far as it should");
}

} // namespace

// When it reads again, the server answers all.
void ClientThatPauses(int)
{
    const TempDirectory directory;
    LoadClient client(directory);
    client.Begin();
    LargeRequests requests(client);
    const long before = client.PeakMemory();
    requests.Send(kStopped);
    Require(requests.HasRest(), "the server takes no requests whose answers nobody reads");
    constexpr long kMost = 64L * 1024; // kB: 32 MB of answers, and those in work
    RequireGrowth("the most memory", before, client.PeakMemory(), kMost);
    requests.Finish();
    RequireGrowth("the most memory", before, client.PeakMemory(), kMost);
    Require(client.End() == 0, "the server ends in good order");
}

void ClientThatNeverReads(int)
{
    const TempDirectory directory;
    LoadClient client(directory);
    client.Begin();
    LargeRequests requests(client);
    requests.Send(kStopped);
    client.Server().CloseInput();
    Require(client.Server().WaitForExit(LoadClient::kLongest) == 1, "the server ends with its client");
}

void LogThatNobodyReads(int changes)
{
    int errors[2];
    Require(::pipe2(errors, O_CLOEXEC) == 0, "there are pipes");
    const TempDirectory directory;
    LoadClient client(directory, errors[1]);
    client.Begin();
    for (int change = 0; change < std::max(2000, changes / 10); ++change)
        client.Replace(client.Uri("closed.c"), change, 0, "a change that the server has to complain about");
    client.Ask("workspace/executeCommand", {{"command", "wren.status"}});
    Require(client.End() == 0, "the server ends in good order");
    ::close(errors[0]);
    ::close(errors[1]);
}

void ClientThatStopsWithinAMessage(int)
{
    const TempDirectory directory;
    LoadClient client(directory);
    client.Begin();
    const int first = client.Request("workspace/executeCommand", {{"command", "wren.status"}});
    Json message = LoadClient::Notification("workspace/symbol", {{"query", "a"}});
    message["id"] = "half";
    const std::string text = Connection::Framed(message);
    client.Server().SendBytes(text.substr(0, text.size() / 2));
    client.WaitForAnswer(first);
    client.Server().SendBytes(text.substr(text.size() / 2) + text.substr(0, text.size() / 2));
    const std::optional<Json> answer = client.Server().Receive(LoadClient::kLongest);
    Require(answer && answer->value("id", Json()) == "half", "the message counts once it is whole");
    client.Server().CloseInput();
    Require(client.Server().WaitForExit(LoadClient::kLongest) == 1, "the server ends with its client");
}

// Whatever the server does meanwhile, it ends, and what it has started ends, too.
void ClientThatIsKilled(int)
{
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    const TempDirectory directory;
    RunKilled([&] {
        LoadClient client(directory);
        client.Begin();
        ::raise(SIGKILL);
    });
    RequireNoProcesses();
    for (int file = 0; file < 300; ++file)
        directory.Write("tree/file" + std::to_string(file) + ".c", Functions(100));
    RunKilled([&] {
        LoadClient client(directory);
        client.Begin();
        Json status;
        do
            status = client.Ask("workspace/executeCommand", {{"command", "wren.status"}});
        while (status["roots"].empty() || status["roots"][0]["total"] == 0);
        ::raise(SIGKILL); // in the middle of the first index
    });
    RequireNoProcesses();
    RunKilled([&] {
        LoadClient client(directory);
        client.Begin();
        LargeRequests requests(client);
        requests.Send(kStopped);
        ::raise(SIGKILL); // while the server waits for its client
    });
    RequireNoProcesses();
}
