#include "base/ChildProcess.h"

#include "base/Pipe.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <iterator>
#include <poll.h>
#include <unistd.h>

namespace base {

Result<ChildProcess> StartChild(const Command& command)
{
    Result<Pipe> in = OpenPipe();
    Result<Pipe> out = OpenPipe();
    Result<Pipe> err = OpenPipe();
    for (const Result<Pipe>* pipe : {&in, &out, &err})
        if (!*pipe)
            return Error{"cannot start " + command.words[0], pipe->Failure().number};
    Program program;
    program.path = command.words[0];
    program.words = command.words;
    program.directory = command.directory;
    if (!command.temporaries.empty())
        program.variables = {{"TMPDIR", command.temporaries}};
    program.descriptors = {in->reading.Number(), out->writing.Number(), err->writing.Number()};
    program.group = Program::Group::Own;
    program.defaultSignals = {SIGPIPE, SIGXFSZ, SIGINT, SIGTERM, SIGHUP};
    program.diesWithThread = true;
    program.dumpsCore = false; // it would be put beside the tags file
    Result<Process> process = Process::Start(program);
    if (!process)
        return process.Failure();
    for (const Descriptor* end : {&in->writing, &out->reading, &err->reading})
        ::fcntl(end->Number(), F_SETFL, O_NONBLOCK);
    return ChildProcess{std::move(in->writing), std::move(out->reading), std::move(err->reading), std::move(*process)};
}

namespace {

constexpr size_t kMostOutput = 64 * 1024; // bytes; more says nothing about a program's version

// Waits until there is output or its end; false at the given time, and when it is cancelled.
bool WaitForOutput(const Descriptor& output, std::chrono::steady_clock::time_point end, const CancelToken& cancel)
{
    while (!cancel.IsCancelled()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left.count() <= 0)
            return false;
        pollfd places[] = {{output.Number(), POLLIN, 0}, {cancel.Descriptor(), POLLIN, 0}};
        ::poll(places, std::size(places), static_cast<int>(left.count()));
        if (places[0].revents != 0)
            return true;
    }
    return false;
}

} // namespace

Result<std::string> OutputOf(const std::vector<std::string>& words, std::chrono::milliseconds limit,
                             const CancelToken& cancel)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    Result<ChildProcess> child = StartChild({words, "", ""});
    if (!child)
        return std::string();
    child->input.Close();
    std::string output;
    char text[4096];
    while (output.size() < kMostOutput) {
        if (!WaitForOutput(child->output, end, cancel))
            return Error{cancel.IsCancelled() ? "cancelled" : words[0] + " does not answer"};
        const ssize_t size = ::read(child->output.Number(), text, sizeof text);
        if (size == 0 || (size < 0 && errno != EAGAIN && errno != EINTR))
            break;
        if (size > 0)
            output.append(text, static_cast<size_t>(size));
    }
    return output;
}

} // namespace base
