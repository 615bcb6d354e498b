#include "tests/support/SupervisedRun.h"

#include "tests/support/FileContent.h"

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>

namespace {

enum class Target { Descriptor, Path, Created }; // what tells whether a call matters

struct Call {
    long number;
    Target target;
    bool needsSpace;
};

const Call kCalls[] = {
    {SYS_write, Target::Descriptor, true},
    {SYS_pwrite64, Target::Descriptor, true},
    {SYS_writev, Target::Descriptor, true},
    {SYS_pwritev, Target::Descriptor, true},
    {SYS_ftruncate, Target::Descriptor, true},
    {SYS_fallocate, Target::Descriptor, true},
    {SYS_fsync, Target::Descriptor, true},
    {SYS_fdatasync, Target::Descriptor, true},
    {SYS_fchmod, Target::Descriptor, false},
    {SYS_openat, Target::Created, true},
    {SYS_mkdirat, Target::Path, true},
    {SYS_linkat, Target::Path, true},
    {SYS_renameat2, Target::Path, true},
    {SYS_unlinkat, Target::Path, false},
#ifdef SYS_rename
    {SYS_rename, Target::Path, true},
    {SYS_renameat, Target::Path, true},
    {SYS_unlink, Target::Path, false},
    {SYS_mkdir, Target::Path, true},
    {SYS_link, Target::Path, true},
    {SYS_rmdir, Target::Path, false},
#endif
};

const Call* FindCall(int number)
{
    for (const Call& call : kCalls)
        if (call.number == number)
            return &call;
    return nullptr;
}

// The filter asks the supervisor about the calls of the table, and allows all others.
std::vector<sock_filter> Filter()
{
    const auto load = [](size_t offset) {
        return sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<__u32>(offset));
    };
    const auto answer = [](__u32 value) { return sock_filter BPF_STMT(BPF_RET | BPF_K, value); };
    std::vector<sock_filter> filter = {load(offsetof(seccomp_data, nr))};
    for (const Call& call : kCalls) {
        const bool isCreation = call.target == Target::Created;
        filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<__u32>(call.number), 0,
                                  static_cast<__u8>(isCreation ? 4 : 1)));
        if (isCreation) {
            filter.push_back(load(offsetof(seccomp_data, args) + 2 * sizeof(__u64)));
            filter.push_back(BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, O_CREAT, 1, 0));
            filter.push_back(answer(SECCOMP_RET_ALLOW));
        }
        filter.push_back(answer(SECCOMP_RET_USER_NOTIF));
    }
    filter.push_back(answer(SECCOMP_RET_ALLOW));
    return filter;
}

int InstallFilter()
{
    std::vector<sock_filter> filter = Filter();
    const sock_fprog program = {static_cast<unsigned short>(filter.size()), filter.data()};
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    return static_cast<int>(
        ::syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER, &program));
}

union OneDescriptor {
    char bytes[CMSG_SPACE(sizeof(int))];
    cmsghdr header;
};

msghdr MessageWith(OneDescriptor& control, iovec& content)
{
    msghdr message = {};
    message.msg_iov = &content;
    message.msg_iovlen = 1;
    message.msg_control = control.bytes;
    message.msg_controllen = sizeof control.bytes;
    return message;
}

void Send(int socket, int descriptor)
{
    OneDescriptor control = {};
    char byte = 0;
    iovec content = {&byte, 1};
    msghdr message = MessageWith(control, content);
    cmsghdr* const header = CMSG_FIRSTHDR(&message);
    *header = {CMSG_LEN(sizeof(int)), SOL_SOCKET, SCM_RIGHTS};
    std::memcpy(CMSG_DATA(header), &descriptor, sizeof descriptor);
    ::sendmsg(socket, &message, 0);
}

int Receive(int socket)
{
    OneDescriptor control = {};
    char byte = 0;
    iovec content = {&byte, 1};
    msghdr message = MessageWith(control, content);
    int descriptor = -1;
    if (::recvmsg(socket, &message, MSG_CMSG_CLOEXEC) == 1 && CMSG_FIRSTHDR(&message) != nullptr)
        std::memcpy(&descriptor, CMSG_DATA(CMSG_FIRSTHDR(&message)), sizeof descriptor);
    return descriptor;
}

// The child: becomes the program, under the filter.
[[noreturn]] void BecomeSupervised(const std::vector<std::string>& words, int socket, const TempDirectory& files)
{
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    ::dup2(::open((files / "output").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600), STDOUT_FILENO);
    ::dup2(::open((files / "errors").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600), STDERR_FILENO);
    const int listener = InstallFilter();
    if (listener < 0)
        ::_exit(127);
    Send(socket, listener);
    ::close(socket);
    ::close(listener);
    ::execv(arguments[0], arguments.data());
    ::_exit(127);
}

class Supervisor {
public:
    Supervisor(pid_t process, int listener, const std::string& directory,
               const std::function<Verdict(const FileChange&)>& decide)
        : process(process), listener(listener), directory(directory), decide(decide)
    {
    }

    // Until the last process under the filter has ended.
    void Run()
    {
        pollfd waiting = {listener, POLLIN, 0};
        while (::poll(&waiting, 1, -1) > 0 && (waiting.revents & POLLIN) != 0) {
            seccomp_notif asked = {};
            if (::ioctl(listener, SECCOMP_IOCTL_NOTIF_RECV, &asked) == 0)
                Answer(asked);
        }
    }

private:
    void Answer(const seccomp_notif& asked)
    {
        seccomp_notif_resp answer = {};
        answer.id = asked.id;
        answer.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
        const Call* const call = FindCall(asked.data.nr);
        const Verdict verdict = call != nullptr && Matters(asked, *call)
                                    ? decide({.number = number++, .needsSpace = call->needsSpace})
                                    : Verdict::Allow;
        if (verdict == Verdict::Kill) {
            ::kill(process, SIGKILL);
            return;
        }
        if (verdict == Verdict::NoSpace) {
            answer.flags = 0;
            answer.error = -ENOSPC;
        }
        ::ioctl(listener, SECCOMP_IOCTL_NOTIF_SEND, &answer);
    }

    bool Matters(const seccomp_notif& asked, const Call& call) const
    {
        const std::string state = "/proc/" + std::to_string(asked.pid);
        if (Content(state + "/status").find("\nTgid:\t" + std::to_string(process) + "\n") == std::string::npos)
            return false;
        if (call.target != Target::Descriptor)
            return true;
        std::error_code ignored;
        const std::string path =
            std::filesystem::read_symlink(state + "/fd/" + std::to_string(asked.data.args[0]), ignored);
        return path.starts_with(directory);
    }

    const pid_t process;
    const int listener;
    const std::string directory;
    const std::function<Verdict(const FileChange&)>& decide;
    size_t number = 0;
};

} // namespace

std::optional<ProgramRun> RunSupervised(const std::vector<std::string>& words, const std::string& directory,
                                        const std::function<Verdict(const FileChange&)>& decide)
{
    const TempDirectory files;
    int sockets[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0)
        return std::nullopt;
    const pid_t process = ::fork();
    if (process == 0)
        BecomeSupervised(words, sockets[1], files);
    ::close(sockets[1]);
    const int listener = Receive(sockets[0]);
    ::close(sockets[0]);
    if (listener >= 0)
        Supervisor(process, listener, directory, decide).Run();
    ::close(listener);
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR)
        continue;
    if (listener < 0)
        return std::nullopt;
    return ProgramRun{WIFEXITED(status) ? WEXITSTATUS(status) : -1, Content(files / "output"),
                      Content(files / "errors"), WIFSIGNALED(status) ? WTERMSIG(status) : 0};
}
