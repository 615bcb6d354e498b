// Runs lines of the Worksheet in a shell.
#pragma once

#include <QObject>
#include <QString>

#include <memory>
#include <string>

class QProcess;

namespace wren {

// One command at a time. The shell is /bin/sh in a process group of its own, with no input; output and errors come in the
// order in which they were written, as bytes. GUI thread.
class WorksheetRunner : public QObject {
    Q_OBJECT
public:
    explicit WorksheetRunner(QObject* parent = nullptr);
    ~WorksheetRunner() override; // stops what runs

    bool IsRunning() const;
    bool Run(const std::string& lines, const std::string& directory); // false when something runs already
    void Stop(); // asks the whole group to end, and makes it after two seconds

signals:
    void Output(const QByteArray& bytes);
    void Ended(int status, bool stopped); // after the last Output(); 128 + n when signal n ended it

private:
    std::unique_ptr<QProcess> process;
    bool stopping = false;
};

// The lines that a run takes: those of the selection, whole; without one, the caret's line. Offsets are bytes.
struct LineRange {
    long start = 0;
    long end = 0; // before the last one's "\n"
};
LineRange LinesToRun(const std::string& text, long selectionStart, long selectionEnd);

} // namespace wren
