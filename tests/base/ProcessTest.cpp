#include "base/Process.h"

#include "base/Pipe.h"
#include "tests/support/Fifo.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace base {
namespace {

Program Shell(const std::string& lines)
{
    Program shell;
    shell.path = "/bin/sh";
    shell.words = {"sh", "-c", lines};
    return shell;
}

std::string AllOf(const Descriptor& from)
{
    std::string all;
    char part[512];
    for (ssize_t count; (count = ::read(from.Number(), part, sizeof part)) > 0;)
        all.append(part, static_cast<size_t>(count));
    return all;
}

struct Ended {
    int status = -1;
    std::string output; // including errors
};

Ended RunToItsEnd(Program program)
{
    Result<Pipe> pipe = OpenPipe();
    if (program.descriptors.empty())
        program.descriptors = {Program::kNoInput, pipe->writing.Number(), pipe->writing.Number()};
    Result<Process> process = Process::Start(program);
    pipe->writing.Close();
    if (!process)
        return {-1, process.Failure().Message()};
    std::string output = AllOf(pipe->reading);
    return {process->Wait(), std::move(output)};
}

TEST(Process, ReturnsTheStatusOfAProgramThatRan)
{
    const struct {
        const char* why;
        const char* lines;
        int status;
    } kCases[] = {
        {"its own", "exit 3", 3},
        {"of an unknown command", "wren-does-not-exist", 127},
        {"of a signal", "kill -9 $$", 128 + 9},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(ShellStatus(RunToItsEnd(Shell(each.lines)).status), each.status) << each.why;
    EXPECT_EQ(ShellStatus(-1), 127) << "there was no program";
}

TEST(Process, ReportsWhyAProgramDoesNotRun)
{
    const TempDirectory files;
    Program absent = Shell("");
    absent.path = files / "absent";
    Program elsewhere = Shell("");
    elsewhere.directory = files / "gone";
    const std::string tooLong = "# " + std::string(1'000'000, 'x');
    const struct {
        const char* why;
        Program program;
        std::string text;
        int number;
    } kCases[] = {
        {"no such program", absent, "cannot run " + absent.path, ENOENT},
        {"no such directory", elsewhere, "cannot go to " + elsewhere.directory, ENOENT},
        {"a word is too long", Shell(tooLong), "cannot run /bin/sh", E2BIG},
    };
    for (const auto& each : kCases) {
        const Result<Process> process = Process::Start(each.program);
        ASSERT_FALSE(process) << each.why;
        EXPECT_EQ(process.Failure().text, each.text) << each.why;
        EXPECT_EQ(process.Failure().number, each.number) << each.why;
    }
    Program closed = Shell("");
    closed.descriptors = {1'000'000};
    const Result<Process> process = Process::Start(closed);
    ASSERT_FALSE(process);
    EXPECT_EQ(process.Failure().Message(), "cannot start /bin/sh: Bad file descriptor");
}

TEST(Process, LeavesNoProcessBehindThatDidNotRun)
{
    Program absent = Shell("");
    absent.path = "/wren-does-not-exist";
    ASSERT_FALSE(Process::Start(absent));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST(Process, RunsInItsDirectoryWithItsVariables)
{
    const TempDirectory files;
    ::setenv("WREN_KEPT", "kept", 1);
    ::setenv("WREN_REPLACED", "ours", 1);
    Program shell = Shell("pwd; echo $WREN_KEPT $WREN_REPLACED $WREN_ADDED");
    shell.directory = files.Path();
    shell.variables = {{"WREN_REPLACED", "its own"}, {"WREN_ADDED", "a=b"}};
    const Ended run = RunToItsEnd(shell);
    ::unsetenv("WREN_KEPT");
    ::unsetenv("WREN_REPLACED");
    EXPECT_EQ(run.output, files.Path() + "\nkept its own a=b\n");
}

TEST(Process, GivesDescriptorsTheirPlacesWhateverTheirNumbers)
{
    Result<Pipe> output = OpenPipe();
    Result<Pipe> third = OpenPipe();
    Result<Pipe> fourth = OpenPipe();
    // Each descriptor is in the place meant for another.
    const Descriptor at3(::fcntl(fourth->writing.Number(), F_DUPFD_CLOEXEC, 3));
    const Descriptor at4(::fcntl(third->writing.Number(), F_DUPFD_CLOEXEC, 4));
    Program shell = Shell("cat; echo out; echo third >&3; echo fourth >&4");
    shell.descriptors = {Program::kNoInput, output->writing.Number(), STDERR_FILENO, at4.Number(), at3.Number()};
    Result<Process> process = Process::Start(shell);
    ASSERT_TRUE(process);
    EXPECT_EQ(process->Wait(), 0);
    char text[32] = {};
    EXPECT_EQ(::read(output->reading.Number(), text, sizeof text), 4) << "cat had nothing to read";
    EXPECT_EQ(std::string(text, 4), "out\n");
    EXPECT_EQ(::read(third->reading.Number(), text, sizeof text), 6);
    EXPECT_EQ(std::string(text, 6), "third\n");
    EXPECT_EQ(::read(fourth->reading.Number(), text, sizeof text), 7);
    EXPECT_EQ(std::string(text, 7), "fourth\n");
}

TEST(Process, InheritsNoOtherDescriptor)
{
    const Result<Pipe> ours = OpenPipe();
    const std::string number = std::to_string(ours->writing.Number());
    EXPECT_NE(RunToItsEnd(Shell("exec 2>/dev/null; echo x >&" + number)).status, 0);
}

TEST(Process, HasAGroupOrASessionOfItsOwn)
{
    const struct {
        Program::Group group;
        bool hasOurSession;
    } kCases[] = {{Program::Group::Own, true}, {Program::Group::OwnSession, false}};
    for (const auto& each : kCases) {
        const Fifo never;
        Program shell = Shell("read line <\"" + never.Path() + "\"");
        shell.group = each.group;
        const Result<Process> process = Process::Start(shell);
        ASSERT_TRUE(process);
        EXPECT_EQ(::getpgid(process->Number()), process->Number());
        EXPECT_EQ(::getsid(process->Number()) == ::getsid(0), each.hasOurSession);
    }
}

TEST(Process, RestoresTheSignalsThatItIsToldToAndBlocksNone)
{
    const auto before = ::signal(SIGPIPE, SIG_IGN);
    const auto beforeHangUp = ::signal(SIGHUP, SIG_IGN);
    sigset_t blocked, mask;
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGTERM);
    ::pthread_sigmask(SIG_BLOCK, &blocked, &mask);
    Program shell = Shell("kill -HUP $$; echo lived; kill -PIPE $$; echo never");
    shell.defaultSignals = {SIGPIPE};
    const Ended run = RunToItsEnd(shell);
    const Ended terminated = RunToItsEnd(Shell("kill $$; echo never"));
    ::pthread_sigmask(SIG_SETMASK, &mask, nullptr);
    ::signal(SIGHUP, beforeHangUp);
    ::signal(SIGPIPE, before);
    EXPECT_EQ(run.output, "lived\n");
    EXPECT_EQ(ShellStatus(run.status), 128 + SIGPIPE);
    EXPECT_EQ(ShellStatus(terminated.status), 128 + SIGTERM);
}

// The child has our memory until its program runs.
TEST(Process, LeavesOurHandlersSignalsAndDirectoryAsTheyWere)
{
    const auto ours = [](int) {};
    const auto before = ::signal(SIGUSR1, ours);
    sigset_t blocked, mask, after;
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGUSR2);
    ::pthread_sigmask(SIG_BLOCK, &blocked, &mask);
    const std::filesystem::path directory = std::filesystem::current_path();
    Program shell = Shell("kill -USR1 $$; echo never");
    shell.directory = "/";
    shell.defaultSignals = {SIGUSR1};
    EXPECT_EQ(ShellStatus(RunToItsEnd(shell).status), 128 + SIGUSR1);
    shell.path = "/nonexistent/program";
    EXPECT_NE(RunToItsEnd(shell).output, "");
    EXPECT_EQ(std::filesystem::current_path(), directory);
    ::pthread_sigmask(SIG_SETMASK, &mask, &after);
    EXPECT_EQ(::sigismember(&after, SIGUSR2), 1);
    EXPECT_EQ(::sigismember(&after, SIGUSR1), 0);
    EXPECT_EQ(::signal(SIGUSR1, before), static_cast<void (*)(int)>(ours));
}

TEST(Process, DumpsNoCoreWhereThatIsAsked)
{
    Program shell = Shell("ulimit -c");
    shell.dumpsCore = false;
    EXPECT_EQ(RunToItsEnd(shell).output, "0\n");
}

TEST(Process, DiesWithTheThreadThatStartedIt)
{
    const Fifo never;
    Program shell = Shell("read line <\"" + never.Path() + "\"");
    shell.diesWithThread = true;
    std::optional<Process> process;
    std::thread([&] { process = std::move(*Process::Start(shell)); }).join();
    EXPECT_EQ(ShellStatus(process->Wait()), 128 + SIGKILL);
}

TEST(Process, IsKilledWithItsOwnerAndWithAllThatItStarted)
{
    const Fifo began;
    const Fifo never;
    pid_t inShell = 0;
    Descriptor ended;
    {
        const Result<Process> process = Process::Start(
            Shell("sh -c 'echo $$ >\"" + began.Path() + "\"; read line <\"" + never.Path() + "\"'; true"));
        ASSERT_TRUE(process);
        inShell = std::stoi(began.ReadLine(process->Number()));
        EXPECT_EQ(::kill(inShell, 0), 0);
        ended = Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, inShell, 0)));
    }
    pollfd place = {ended.Number(), POLLIN, 0};
    EXPECT_EQ(::poll(&place, 1, 60'000), 1);
}

TEST(Process, IsKilledWhenPatienceEnds)
{
    const Fifo never;
    Result<Process> process = Process::Start(Shell("read line <\"" + never.Path() + "\""));
    EXPECT_EQ(ShellStatus(process->WaitOrKill(0)), 128 + SIGKILL);
    EXPECT_EQ(process->Number(), 0);
    process->Kill();
    EXPECT_EQ(ShellStatus(process->Wait()), 128 + SIGKILL) << "it keeps its status";
}

TEST(Process, EndsOnItsOwnWithinPatience)
{
    Result<Process> process = Process::Start(Shell("exit 4"));
    EXPECT_EQ(ShellStatus(process->WaitOrKill(60'000)), 4);
}

TEST(Process, KeepsItsNumberUntilItIsWaitedFor)
{
    Result<Process> process = Process::Start(Shell("kill -9 $$"));
    EXPECT_TRUE(process->WaitUntilEnded());
    const Descriptor end = process->EndDescriptor();
    pollfd place = {end.Number(), POLLIN, 0};
    EXPECT_EQ(::poll(&place, 1, 0), 1);
    EXPECT_EQ(::kill(process->Number(), 0), 0);
    EXPECT_EQ(ShellStatus(process->Wait()), 128 + SIGKILL);

    Result<Process> other = Process::Start(Shell("exit 1"));
    EXPECT_FALSE(other->WaitUntilEnded());
}

} // namespace
} // namespace base
