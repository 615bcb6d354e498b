// Runs lines of the Worksheet in a shell.
#pragma once

#include "base/Process.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <optional>
#include <string>
#include <sys/types.h>

class QSocketNotifier;

namespace wren {

// One command at a time. The shell is /bin/sh in a session of its own, with no input and no terminal to ask at; output
// and errors come in the order in which they were written, as bytes. A command that a line leaves running in the
// background does not keep the run from ending, and its output is dropped. GUI thread.
class WorksheetRunner : public QObject {
    Q_OBJECT
public:
    explicit WorksheetRunner(QObject* parent = nullptr);
    ~WorksheetRunner() override; // kills the running command

    bool IsRunning() const { return isRunning; }
    bool Run(const std::string& lines, const std::string& directory); // false when a command runs already
    void Stop(); // asks the whole group to end, and kills it after two seconds

signals:
    void Output(const QByteArray& bytes);
    void Ended(int status, bool stopped); // after the last Output(); 128 + n when signal n ended it

private:
    base::Result<void> Start(const std::string& lines, const std::string& directory);
    void TakeOutput();
    void Tell(); // the output gathered
    void EndShell();
    void TellOfFailure(const std::string& why);
    void End(int status);
    void KillGroup();

    bool isRunning = false;
    std::optional<base::Process> shell;
    base::Descriptor output; // of the shell's group
    base::Descriptor end;    // readable when the shell has ended
    QSocketNotifier* moreOutput = nullptr;
    QSocketNotifier* ended = nullptr;
    QByteArray gathered;
    pid_t group = 0; // 0 when nothing of it is left to be stopped
    bool stopping = false;
    QTimer patience;
    QTimer gathering; // runs while output is kept back
};

// The lines that a run takes: those of the selection, whole; without one, the caret's line. Offsets are bytes.
struct LineRange {
    long start = 0;
    long end = 0; // before the last one's "\n"
};
LineRange LinesToRun(const std::string& text, long selectionStart, long selectionEnd);

} // namespace wren
