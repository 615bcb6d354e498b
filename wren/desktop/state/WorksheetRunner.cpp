#include "wren/desktop/state/WorksheetRunner.h"

#include <QProcess>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <unistd.h>

namespace wren {

namespace {

constexpr std::chrono::seconds kPatience(2);
constexpr std::chrono::milliseconds kGathering(30); // each addition to a text costs as much as drawing it
constexpr int kCannotRun = 126;                     // as shells have it

void Say(const char* text)
{
    (void)!::write(STDERR_FILENO, text, std::strlen(text));
}

// In the child, between fork and exec, where little is safe. The shell is started from here, since Qt's own way would
// make text of the bytes.
[[noreturn]] void BecomeShell(const char* lines, const char* directory)
{
    ::setsid();
    if (*directory != '\0' && ::chdir(directory) != 0) {
        Say("wren: cannot go to ");
        Say(directory);
    } else {
        ::execl("/bin/sh", "sh", "-c", lines, nullptr);
        Say("wren: the shell cannot be run with these lines");
    }
    Say(": ");
    Say(::strerrordesc_np(errno));
    Say("\n");
    ::_exit(kCannotRun);
}

} // namespace

WorksheetRunner::WorksheetRunner(QObject* parent) : QObject(parent)
{
    patience.setSingleShot(true);
    connect(&patience, &QTimer::timeout, this, &WorksheetRunner::KillGroup);
    gathering.setSingleShot(true);
    connect(&gathering, &QTimer::timeout, this, &WorksheetRunner::Read);
}

WorksheetRunner::~WorksheetRunner()
{
    if (process != nullptr)
        process->disconnect(this);
    if (process != nullptr || patience.isActive())
        KillGroup();
    if (process != nullptr)
        process->waitForFinished();
}

bool WorksheetRunner::Run(const std::string& lines, const std::string& directory)
{
    if (IsRunning())
        return false;
    if (patience.isActive())
        KillGroup(); // what is left of the run before
    stopping = false;
    process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::MergedChannels);
    process->setStandardInputFile(QProcess::nullDevice());
    process->setChildProcessModifier([&lines, &directory] { BecomeShell(lines.c_str(), directory.c_str()); });
    connect(process.get(), &QProcess::readyRead, this, [this] {
        if (!gathering.isActive())
            gathering.start(kGathering);
    });
    connect(process.get(), &QProcess::finished, this,
            [this](int status, QProcess::ExitStatus how) { End(how == QProcess::NormalExit ? status : 128 + status); });
    process->setProgram("/bin/sh");
    process->start();
    group = process->waitForStarted(-1) ? static_cast<pid_t>(process->processId()) : 0;
    process->setChildProcessModifier({});
    if (group == 0)
        QMetaObject::invokeMethod(this, &WorksheetRunner::TellOfFailure, Qt::QueuedConnection);
    return true;
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

void WorksheetRunner::Read()
{
    if (const QByteArray bytes = process->readAll(); !bytes.isEmpty())
        emit Output(bytes);
}

// The shell may have ended before its children, which then have what remains of the two seconds. While one of them
// lives, the group's number is not given to others.
void WorksheetRunner::End(int status)
{
    gathering.stop();
    Read();
    if (group != 0 && ::kill(-group, 0) != 0)
        patience.stop();
    process.release()->deleteLater();
    emit Ended(status, stopping);
}

void WorksheetRunner::TellOfFailure()
{
    emit Output("wren: " + process->errorString().toLocal8Bit() + "\n");
    End(kCannotRun);
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
