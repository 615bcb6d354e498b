#include "Conversation.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kLongestAnswer = 180'000; // milliseconds; the longest wait that a line asks for itself is 60 seconds

struct Pipe {
    Pipe()
    {
        if (::pipe2(ends, O_CLOEXEC) != 0)
            throw std::runtime_error("cannot make a pipe");
    }
    int ends[2]; // read from the first, write to the second
};

[[noreturn]] void Become(const std::vector<std::string>& words, const std::string& directory, int input, int output,
                         int errors)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL); // whoever ends the runner ends an editor that waits for a held file
    std::signal(SIGPIPE, SIG_DFL);
    ::dup2(input, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(errors, STDERR_FILENO);
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    if (::chdir(directory.c_str()) == 0)
        ::execv(arguments[0], arguments.data());
    ::_exit(127);
}

int WaitFor(pid_t program)
{
    int status = 0;
    while (::waitpid(program, &status, 0) < 0 && errno == EINTR)
        continue;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

Conversation::Conversation(const std::vector<std::string>& words, const std::string& directory,
                           const std::string& errors)
{
    std::signal(SIGPIPE, SIG_IGN); // a program that has ended shows in its answers
    const Pipe input;
    const Pipe output;
    const int errorFile = ::open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    program = ::fork();
    if (program == 0)
        Become(words, directory, input.ends[0], output.ends[1], errorFile);
    ::close(errorFile);
    ::close(input.ends[0]);
    ::close(output.ends[1]);
    lines = ::fdopen(input.ends[1], "w");
    answers = ::fdopen(output.ends[0], "r");
    if (program < 0 || lines == nullptr || answers == nullptr)
        throw std::runtime_error("cannot start " + words[0]);
}

Conversation::~Conversation()
{
    Close(lines);
    Close(answers);
    if (program > 0) {
        ::kill(program, SIGKILL);
        WaitFor(program);
    }
}

std::optional<std::string> Conversation::Ask(const std::string& line)
{
    std::fwrite(line.data(), 1, line.size(), lines);
    std::fputc('\n', lines);
    std::fflush(lines);
    // There is one answer a line, so none is waiting in the stream's buffer.
    pollfd answer = {::fileno(answers), POLLIN, 0};
    if (::poll(&answer, 1, kLongestAnswer) == 0)
        throw std::runtime_error("no answer to " + line);
    return Next();
}

std::vector<std::string> Conversation::Rest()
{
    Close(lines);
    std::vector<std::string> rest;
    while (const std::optional<std::string> answer = Next())
        rest.push_back(*answer);
    return rest;
}

int Conversation::End()
{
    Close(lines);
    const int status = WaitFor(program);
    program = -1;
    return status;
}

std::optional<std::string> Conversation::Next()
{
    char* text = nullptr;
    size_t capacity = 0;
    const ssize_t length = ::getline(&text, &capacity, answers);
    std::optional<std::string> answer;
    if (length > 0)
        answer.emplace(text, text[length - 1] == '\n' ? length - 1 : length);
    std::free(text);
    return answer;
}

void Conversation::Close(FILE*& stream)
{
    if (stream != nullptr)
        std::fclose(stream);
    stream = nullptr;
}
