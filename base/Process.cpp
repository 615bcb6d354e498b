#include "base/Process.h"

#include "base/Pipe.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace base {

namespace {

constexpr int kCannotRun = 127; // as in a shell

std::vector<std::string> EnvironmentOf(const Program& program)
{
    std::vector<std::string> environment;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string name(*variable, std::strcspn(*variable, "="));
        if (std::ranges::find(program.variables, name, [](const auto& each) { return each.first; }) ==
            program.variables.end())
            environment.push_back(*variable);
    }
    for (const auto& [name, value] : program.variables)
        environment.push_back(name + "=" + value);
    return environment;
}

// For exec(); points into 'texts'.
std::vector<char*> Pointers(const std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

// Returns a descriptor numbered above those that the program receives, so that none overwrites another.
Descriptor OutOfTheWay(int descriptor, size_t given)
{
    if (descriptor != Program::kNoInput)
        return Descriptor(::fcntl(descriptor, F_DUPFD_CLOEXEC, static_cast<int>(given)));
    const Descriptor nothing(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    return nothing.IsOpen() ? OutOfTheWay(nothing.Number(), given) : Descriptor();
}

// Everything that the child uses; prepared before it is there.
struct Prepared {
    explicit Prepared(const Program& program)
        : program(program), wordTexts(program.words), variableTexts(EnvironmentOf(program)), words(Pointers(wordTexts)),
          variables(Pointers(variableTexts)), parent(::getpid())
    {
    }

    // False, with errno, when there are no descriptors left.
    bool MoveDescriptors(const Descriptor& report)
    {
        const size_t given = program.descriptors.size();
        for (const int each : program.descriptors)
            if (!descriptors.emplace_back(OutOfTheWay(each, given)).IsOpen())
                return false;
        failure = OutOfTheWay(report.Number(), given);
        return failure.IsOpen();
    }

    const Program& program;
    const std::vector<std::string> wordTexts;
    const std::vector<std::string> variableTexts;
    const std::vector<char*> words;
    const std::vector<char*> variables;
    std::vector<Descriptor> descriptors;
    Descriptor failure; // the child writes here why it cannot run
    const pid_t parent;
};

enum class Step { GoToDirectory, Run };

struct Failure {
    Step step;
    int reason;
};

// The rest runs in the child, which has our memory until it runs the program: only async-signal-safe calls are allowed,
// and nothing may be left changed.

[[noreturn]] void GiveUp(const Descriptor& to, Step step)
{
    const Failure failure = {step, errno};
    (void)!::write(to.Number(), &failure, sizeof failure);
    ::_exit(kCannotRun);
}

void ResetSignal(int number)
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    ::sigaction(number, &action, nullptr);
}

// Our handlers would run in the child, on our memory, as soon as it blocks no signals.
void ResetSignals(const std::vector<int>& defaults)
{
    struct sigaction action = {};
    for (int number = 1; number < NSIG; ++number)
        if (::sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN && action.sa_handler != SIG_DFL)
            ResetSignal(number);
    for (const int number : defaults)
        ResetSignal(number);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

[[noreturn]] void Become(const Prepared& prepared)
{
    const Program& program = prepared.program;
    if (program.diesWithThread) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != prepared.parent)
            ::_exit(kCannotRun); // the parent died before prctl()
    }
    if (program.group == Program::Group::OwnSession)
        ::setsid();
    else
        ::setpgid(0, 0);
    const rlimit noCore = {0, 0};
    if (!program.dumpsCore)
        ::setrlimit(RLIMIT_CORE, &noCore);
    for (size_t number = 0; number < prepared.descriptors.size(); ++number)
        ::dup2(prepared.descriptors[number].Number(), static_cast<int>(number));
    ResetSignals(program.defaultSignals);
    if (!program.directory.empty() && ::chdir(program.directory.c_str()) != 0)
        GiveUp(prepared.failure, Step::GoToDirectory);
    ::execve(program.path.c_str(), prepared.words.data(), prepared.variables.data());
    GiveUp(prepared.failure, Step::Run);
}

// In the parent. Its memory is lent, not copied: while a large index was made, copying the tables of its pages took a
// tenth of all time. The calling thread waits until the program runs, and no signal may reach one of our handlers in
// the child. A function of its own, since the child shares its frame.
[[gnu::noinline]] pid_t StartChild(const Prepared& prepared)
{
    sigset_t all, before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    const pid_t number = ::vfork();
    if (number == 0)
        Become(prepared);
    const int reason = errno;
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    errno = reason;
    return number;
}

// In the parent. The pipe is empty when the program runs, since the other end is close-on-exec.
bool ReadFailure(const Descriptor& report, Failure& failure)
{
    ssize_t count;
    while ((count = ::read(report.Number(), &failure, sizeof failure)) < 0 && errno == EINTR)
        continue;
    return count == sizeof failure;
}

} // namespace

Result<Process> Process::Start(const Program& program)
{
    std::string cannotStart = "cannot start " + program.path;
    Prepared prepared(program);
    Result<Pipe> report = OpenPipe();
    if (!report || !prepared.MoveDescriptors(report->writing))
        return SystemError(std::move(cannotStart));
    const pid_t number = StartChild(prepared);
    if (number < 0)
        return SystemError(std::move(cannotStart));
    Process process(number);
    report->writing.Close();
    prepared.failure.Close();
    Failure failure;
    if (!ReadFailure(report->reading, failure))
        return process;
    process.Wait();
    if (failure.step == Step::GoToDirectory)
        return Error{"cannot go to " + program.directory, failure.reason};
    return Error{"cannot run " + program.path, failure.reason};
}

Process::Process(Process&& other) noexcept : number(std::exchange(other.number, 0)), status(other.status) {}

Process& Process::operator=(Process&& other) noexcept
{
    std::swap(number, other.number);
    std::swap(status, other.status);
    return *this;
}

Process::~Process()
{
    Kill();
    Wait();
}

void Process::Kill()
{
    if (number > 0)
        ::kill(-number, SIGKILL);
}

int Process::Wait()
{
    if (number <= 0)
        return status;
    status = -1;
    while (::waitpid(number, &status, 0) < 0 && errno == EINTR)
        continue;
    number = 0;
    return status;
}

int Process::WaitOrKill(int patience)
{
    if (number > 0) {
        const Descriptor ended = EndDescriptor();
        pollfd place = {ended.Number(), POLLIN, 0};
        if (::poll(&place, 1, patience) == 0)
            Kill();
    }
    return Wait();
}

bool Process::WaitUntilEnded() const
{
    siginfo_t end = {};
    while (::waitid(P_PID, static_cast<id_t>(number), &end, WEXITED | WNOWAIT) < 0 && errno == EINTR)
        continue;
    return end.si_code == CLD_KILLED || end.si_code == CLD_DUMPED;
}

Descriptor Process::EndDescriptor() const
{
    return Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, number, 0)));
}

int ShellStatus(int status)
{
    return WIFEXITED(status) ? WEXITSTATUS(status) : WIFSIGNALED(status) ? 128 + WTERMSIG(status) : kCannotRun;
}

} // namespace base
