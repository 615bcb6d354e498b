#include "cplustags/ChildProcess.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace cplustags {

namespace {

constexpr int kCannotRun = 127; // as a shell has it

struct Pipe {
    base::Descriptor reading;
    base::Descriptor writing;

    bool Open()
    {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            return false;
        reading = base::Descriptor(ends[0]);
        writing = base::Descriptor(ends[1]);
        return true;
    }
};

void DoNotBlock(const base::Descriptor& end)
{
    ::fcntl(end.Number(), F_SETFL, O_NONBLOCK);
}

std::vector<std::string> EnvironmentOf(const Command& command)
{
    constexpr std::string_view kVariable = "TMPDIR=";
    std::vector<std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable)
        if (command.temporaries.empty() || std::strncmp(*variable, kVariable.data(), kVariable.size()) != 0)
            variables.push_back(*variable);
    if (!command.temporaries.empty())
        variables.push_back(std::string(kVariable) + command.temporaries);
    return variables;
}

// As exec() wants them; the texts stay where they are.
std::vector<char*> Pointers(const std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

// The rest runs in the child, where after a fork() beside other threads only such calls are allowed as a handler of
// signals may make.

void ForgetSignalHandling()
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    for (const int number : {SIGPIPE, SIGXFSZ, SIGINT, SIGTERM, SIGHUP})
        ::sigaction(number, &action, nullptr);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

[[noreturn]] void SayWhyAndExit(const char* what)
{
    const char* const reason = ::strerrordesc_np(errno);
    for (const char* text : {"cannot run ", what, ": ", reason, "\n"})
        if (::write(STDERR_FILENO, text, std::strlen(text)) < 0)
            break;
    ::_exit(kCannotRun);
}

[[noreturn]] void Become(char* const* words, char* const* environment, const char* directory, pid_t parent)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent)
        ::_exit(kCannotRun); // it died before the line above
    ::setpgid(0, 0);
    const rlimit noCore = {0, 0}; // it would be put beside the tags file
    ::setrlimit(RLIMIT_CORE, &noCore);
    ForgetSignalHandling();
    if (*directory != '\0' && ::chdir(directory) != 0)
        SayWhyAndExit(directory);
    ::execve(words[0], words, environment);
    SayWhyAndExit(words[0]);
}

} // namespace

ChildProcess::ChildProcess(const Command& command)
{
    Pipe in;
    Pipe out;
    Pipe err;
    const std::vector<std::string> variables = EnvironmentOf(command);
    const std::vector<char*> environment = Pointers(variables);
    const std::vector<char*> words = Pointers(command.words);
    const pid_t parent = ::getpid();
    if (in.Open() && out.Open() && err.Open())
        process = ::fork();
    if (process == 0) {
        ::dup2(in.reading.Number(), STDIN_FILENO);
        ::dup2(out.writing.Number(), STDOUT_FILENO);
        ::dup2(err.writing.Number(), STDERR_FILENO);
        Become(words.data(), environment.data(), command.directory.c_str(), parent);
    }
    if (process < 0) {
        error = "cannot start " + command.words[0] + ": " + std::strerror(errno);
        return;
    }
    input = std::move(in.writing);
    output = std::move(out.reading);
    errors = std::move(err.reading);
    for (const base::Descriptor* end : {&input, &output, &errors})
        DoNotBlock(*end);
}

ChildProcess::~ChildProcess()
{
    Kill();
    Wait();
}

void ChildProcess::Kill()
{
    if (process <= 0)
        return;
    ::kill(-process, SIGKILL); // and what it may have started
    ::kill(process, SIGKILL);  // it may not have come to making its group
}

int ChildProcess::Wait()
{
    while (process > 0)
        if (::waitpid(process, &status, 0) >= 0 || errno != EINTR)
            process = -1;
    return status;
}

int ChildProcess::WaitOrKill(int patience)
{
    if (process > 0) {
        const base::Descriptor ended(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
        pollfd place = {ended.Number(), POLLIN, 0};
        if (::poll(&place, 1, patience) == 0)
            Kill();
    }
    return Wait();
}

std::string OutputOf(const std::vector<std::string>& words)
{
    ChildProcess child({words, "", ""});
    if (!child.Error().empty())
        return "";
    child.input.Close();
    ::fcntl(child.output.Number(), F_SETFL, 0);
    std::string output;
    char text[4096];
    for (ssize_t size; (size = ::read(child.output.Number(), text, sizeof text)) > 0;)
        output.append(text, static_cast<size_t>(size));
    return output;
}

} // namespace cplustags
