// Reads any bytes as the messages of an editor to the language server: as they are, or each line as a message behind a
// proper beginning. The server must end in good order, and all that it sends must be messages.
#include "base/CancelToken.h"
#include "base/Descriptor.h"
#include "fuzz/Lines.h"
#include "fuzz/Require.h"
#include "tests/support/TempDirectory.h"
#include "wren/lsp/Server.h"
#include "wren/lsp/protocol/MessageReader.h"

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace {

base::Descriptor InMemory(const std::string& content)
{
    base::Descriptor file(::memfd_create("messages", MFD_CLOEXEC));
    Require(file.IsOpen(), "there is a file");
    Require(::write(file.Number(), content.data(), content.size()) == static_cast<ssize_t>(content.size()),
            "the messages are written");
    ::lseek(file.Number(), 0, SEEK_SET);
    return file;
}

std::string Framed(const std::string& body)
{
    return "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

// A text that begins with "raw" is sent as it is.
std::string Messages(const std::uint8_t* data, std::size_t size, const std::string& root)
{
    const std::string_view kRaw = "raw\n";
    const std::string content(reinterpret_cast<const char*>(data), size);
    if (content.starts_with(kRaw))
        return content.substr(kRaw.size());
    std::string messages =
        Framed(R"({"jsonrpc":"2.0","id":0,"method":"initialize","params":{"processId":null,"rootUri":"file://)" + root +
               R"(","capabilities":{"window":{"workDoneProgress":true}}}})") +
        Framed(R"({"jsonrpc":"2.0","method":"initialized","params":{}})");
    for (const std::string& line : Split(data, size, '\n'))
        messages += Framed(line);
    return messages;
}

void RequireMessages(int output)
{
    ::lseek(output, 0, SEEK_SET);
    wren::lsp::MessageReader reader(output);
    std::string body;
    wren::lsp::MessageReader::Outcome outcome;
    while ((outcome = reader.Read(body)) == wren::lsp::MessageReader::Outcome::Message) {
        const wren::lsp::Json message = wren::lsp::Json::parse(body, nullptr, false);
        Require(message.is_object() && message.value("jsonrpc", "") == "2.0", "what is sent is JSON-RPC");
        Require(message.contains("method") || message.contains("result") != message.contains("error"),
                "an answer is a result or an error");
    }
    Require(outcome == wren::lsp::MessageReader::Outcome::End, "what is sent is framed");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const TempDirectory tree;
    static const bool isReady = [] {
        std::signal(SIGPIPE, SIG_IGN);
        return ::setenv("CPLUSTAGS_CTAGS", "/nonexistent", 1) ==
               0; // a process for each text would take most of the time
    }();
    Require(isReady, "the run is prepared");
    const base::Descriptor input = InMemory(Messages(data, size, tree.Path()));
    const base::Descriptor output = InMemory("");
    {
        base::CancelToken stop;
        wren::lsp::SessionOptions options;
        options.withIndex = false;
        options.cache = tree.Path();
        wren::lsp::Server server(input.Number(), output.Number(), options, stop);
        const int status = server.Run();
        Require(status == 0 || status == 1, "the exit status is one of two");
    }
    RequireMessages(output.Number());
    return 0;
}
