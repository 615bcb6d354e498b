#include "wren/desktop/state/WorksheetRunner.h"

#include "base/Pipe.h"

#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace wren {

namespace {

constexpr std::chrono::seconds kPatience(2);
constexpr std::chrono::milliseconds kGathering(30); // each addition to a text costs as much as drawing it
constexpr int kCannotRun = 126;                     // as shells have it

base::Program Shell(const std::string& lines, const std::string& directory, int output)
{
    base::Program shell;
    shell.path = "/bin/sh";
    shell.words = {"sh", "-c", lines};
    shell.directory = directory;
    shell.descriptors = {base::Program::kNoInput, output, output};
    shell.defaultSignals = {SIGPIPE};
    return shell;
}

std::string WhyNotStarted(const base::Error& error)
{
    const std::string what = error.number == E2BIG ? "the shell cannot be run with these lines" : error.text;
    return "wren: " + what + ": " + ::strerrordesc_np(error.number) + "\n";
}

void DisableAndDelete(QSocketNotifier*& notifier)
{
    if (notifier == nullptr)
        return;
    notifier->setEnabled(false);
    notifier->deleteLater(); // it may be the one that is calling
    notifier = nullptr;
}

} // namespace

WorksheetRunner::WorksheetRunner(QObject* parent) : QObject(parent)
{
    patience.setSingleShot(true);
    connect(&patience, &QTimer::timeout, this, &WorksheetRunner::KillGroup);
    gathering.setSingleShot(true);
    connect(&gathering, &QTimer::timeout, this, &WorksheetRunner::Tell);
}

WorksheetRunner::~WorksheetRunner()
{
    if (shell || patience.isActive())
        KillGroup();
    delete moreOutput; // before their descriptors are closed
    delete ended;
}

bool WorksheetRunner::Run(const std::string& lines, const std::string& directory)
{
    if (IsRunning())
        return false;
    if (patience.isActive())
        KillGroup(); // what is left of the run before
    isRunning = true;
    stopping = false;
    group = 0;
    if (const base::Result<void> started = Start(lines, directory); !started)
        QMetaObject::invokeMethod(
            this, [this, why = WhyNotStarted(started.Failure())] { TellOfFailure(why); }, Qt::QueuedConnection);
    return true;
}

base::Result<void> WorksheetRunner::Start(const std::string& lines, const std::string& directory)
{
    base::Result<base::Pipe> pipe = base::OpenPipe();
    if (!pipe)
        return pipe.Failure();
    base::Result<base::Process> started = base::Process::Start(Shell(lines, directory, pipe->writing.Number()));
    if (!started)
        return started.Failure();
    end = started->EndDescriptor();
    if (!end.IsOpen())
        return base::SystemError("cannot wait for the shell");
    group = started->Number();
    shell = std::move(*started);
    output = std::move(pipe->reading);
    ::fcntl(output.Number(), F_SETFL, O_NONBLOCK);
    moreOutput = new QSocketNotifier(output.Number(), QSocketNotifier::Read, this);
    connect(moreOutput, &QSocketNotifier::activated, this, &WorksheetRunner::TakeOutput);
    ended = new QSocketNotifier(end.Number(), QSocketNotifier::Read, this);
    connect(ended, &QSocketNotifier::activated, this, &WorksheetRunner::EndShell);
    return {};
}

void WorksheetRunner::Stop()
{
    if (!IsRunning() || stopping || group == 0)
        return;
    stopping = true;
    patience.start(kPatience);
    ::kill(-group, SIGTERM);
    ::kill(-group, SIGCONT); // what is suspended hears nothing
}

// What there is now: a line that was left running may write for ever.
void WorksheetRunner::TakeOutput()
{
    int available = 0;
    ::ioctl(output.Number(), FIONREAD, &available);
    QByteArray bytes(std::max(available, 1), '\0');
    const ssize_t count = ::read(output.Number(), bytes.data(), static_cast<size_t>(bytes.size()));
    if (count == 0)
        DisableAndDelete(moreOutput); // nobody has the other end
    if (count <= 0)
        return;
    gathered.append(bytes.constData(), count);
    if (!gathering.isActive())
        gathering.start(kGathering);
}

void WorksheetRunner::Tell()
{
    if (!gathered.isEmpty())
        emit Output(std::exchange(gathered, {}));
}

// The shell may have ended before its children, which then have what remains of the two seconds. While one of them
// lives, the group's number is not given to others.
void WorksheetRunner::EndShell()
{
    if (moreOutput != nullptr)
        TakeOutput();
    gathering.stop();
    Tell();
    DisableAndDelete(moreOutput);
    DisableAndDelete(ended);
    const int status = base::ShellStatus(shell->Wait());
    shell.reset();
    output.Close();
    end.Close();
    if (group != 0 && ::kill(-group, 0) != 0)
        patience.stop();
    End(status);
}

void WorksheetRunner::TellOfFailure(const std::string& why)
{
    emit Output(QByteArray::fromStdString(why));
    End(kCannotRun);
}

void WorksheetRunner::End(int status)
{
    isRunning = false;
    emit Ended(status, stopping);
}

void WorksheetRunner::KillGroup()
{
    patience.stop();
    if (group != 0)
        ::kill(-group, SIGKILL);
    group = 0;
}

LineRange LinesToRun(const std::string& text, long selectionStart, long selectionEnd)
{
    const auto size = static_cast<long>(text.size());
    const long first = std::clamp(std::min(selectionStart, selectionEnd), 0L, size);
    long last = std::clamp(std::max(selectionStart, selectionEnd), 0L, size);
    if (last > first && text[last - 1] == '\n')
        --last; // a selection of whole lines ends where the next one begins
    const size_t before = first == 0 ? std::string::npos : text.rfind('\n', first - 1);
    const size_t after = std::min(text.find('\n', last), text.size());
    return {before == std::string::npos ? 0 : static_cast<long>(before) + 1, static_cast<long>(after)};
}

} // namespace wren
