// Runs lines of the Worksheet in a shell.
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>
#include <string>
#include <sys/types.h>

class QProcess;

namespace wren {

// One command at a time. The shell is /bin/sh in a session of its own, with no input and no terminal to ask at; output
// and errors come in the order in which they were written, as bytes. What a line leaves running in the background does
// not keep the run from ending, and is heard no more. GUI thread.
class WorksheetRunner : public QObject {
    Q_OBJECT
public:
    explicit WorksheetRunner(QObject* parent = nullptr);
    ~WorksheetRunner() override; // stops what runs, at once

    bool IsRunning() const { return process != nullptr; }
    bool Run(const std::string& lines, const std::string& directory); // false when something runs already
    void Stop(); // asks the whole group to end, and makes what is left of it after two seconds

signals:
    void Output(const QByteArray& bytes);
    void Ended(int status, bool stopped); // after the last Output(); 128 + n when signal n ended it

private:
    void Read();
    void End(int status);
    void TellOfFailure(); // of starting the shell
    void KillGroup();

    std::unique_ptr<QProcess> process;
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
