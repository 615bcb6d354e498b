#include "Connection.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

int Milliseconds(Clock::time_point limit)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(limit - Clock::now()).count();
    return left > 0 ? static_cast<int>(left) : 0;
}

} // namespace

Connection::Connection(const std::vector<std::string>& command, const std::string& directory, int errors)
{
    int in[2], out[2];
    if (::pipe2(in, O_CLOEXEC) != 0 || ::pipe2(out, O_CLOEXEC) != 0)
        throw std::runtime_error("there are no pipes");
    std::vector<char*> words;
    for (const std::string& word : command)
        words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    process = ::fork();
    if (process == 0) {
        if (::dup2(in[0], 0) < 0 || ::dup2(out[1], 1) < 0 || (errors >= 0 && ::dup2(errors, 2) < 0) ||
            ::chdir(directory.c_str()) != 0)
            ::_exit(126);
        ::execv(words[0], words.data());
        ::_exit(127);
    }
    ::close(in[0]);
    ::close(out[1]);
    input = in[1];
    output = out[0];
    ::fcntl(input, F_SETFL, O_NONBLOCK);
}

Connection::~Connection()
{
    if (process > 0) {
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
    }
    if (input >= 0)
        ::close(input);
    ::close(output);
}

void Connection::SendBytes(const std::string& bytes)
{
    SendSome(bytes, std::chrono::milliseconds(-1)); // without end
}

size_t Connection::SendSome(const std::string& bytes, std::chrono::milliseconds longestPause)
{
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t wrote = ::write(input, bytes.data() + done, bytes.size() - done);
        if (wrote >= 0)
            done += static_cast<size_t>(wrote);
        else if (errno != EINTR && errno != EAGAIN)
            break; // the server has ended, which the output and the exit status tell
        pollfd wait = {input, POLLOUT, 0};
        if (wrote < 0 && ::poll(&wait, 1, static_cast<int>(longestPause.count())) == 0)
            break;
    }
    return done;
}

std::string Connection::Framed(const nlohmann::json& message)
{
    const std::string body = message.dump();
    return "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

void Connection::Send(const nlohmann::json& message)
{
    SendBytes(Framed(message));
}

void Connection::CloseInput()
{
    if (input >= 0)
        ::close(input);
    input = -1;
}

void Connection::Signal(int number) const
{
    ::kill(process, number);
}

bool Connection::ReadMore(Clock::time_point limit)
{
    pollfd wait = {output, POLLIN, 0};
    if (::poll(&wait, 1, Milliseconds(limit)) <= 0)
        return false;
    char block[65536];
    const ssize_t got = ::read(output, block, sizeof block);
    if (got > 0)
        buffer.append(block, static_cast<size_t>(got));
    else
        atEnd = got == 0 || errno != EINTR;
    return got > 0;
}

std::optional<std::string> Connection::Take()
{
    const std::string kName = "Content-Length: ";
    const size_t end = buffer.find("\r\n\r\n");
    if (buffer.size() >= kName.size() && !buffer.starts_with(kName))
        throw std::runtime_error("what the server sends does not begin with a header: " + buffer.substr(0, 200));
    if (end == std::string::npos)
        return std::nullopt;
    const size_t length = std::stoul(buffer.substr(kName.size(), end - kName.size()));
    if (buffer.size() < end + 4 + length)
        return std::nullopt;
    std::string message = buffer.substr(end + 4, length);
    buffer.erase(0, end + 4 + length);
    return message;
}

std::optional<nlohmann::json> Connection::Receive(std::chrono::milliseconds longest)
{
    const std::optional<std::string> text = ReceiveText(longest);
    return text ? std::optional(nlohmann::json::parse(*text)) : std::nullopt;
}

std::optional<std::string> Connection::ReceiveText(std::chrono::milliseconds longest)
{
    const auto limit = Clock::now() + longest;
    for (;;) {
        if (std::optional<std::string> message = Take())
            return message;
        if (!ReadMore(limit) && (atEnd || Clock::now() >= limit)) {
            if (atEnd && !buffer.empty())
                throw std::runtime_error("the server ended within a message");
            return std::nullopt;
        }
    }
}

int Connection::WaitForExit(std::chrono::milliseconds longest)
{
    const auto limit = Clock::now() + longest;
    int status = 0;
    for (;;) {
        const pid_t ended = ::waitpid(process, &status, WNOHANG);
        if (ended == process)
            break;
        if (Clock::now() >= limit)
            throw std::runtime_error("the server does not end");
        ::poll(nullptr, 0, 5);
    }
    process = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}
