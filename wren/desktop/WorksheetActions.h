// The Worksheet in the editor: opening it, and running its lines.
#pragma once

#include <QObject>

#include <string>
#include <string_view>

class QWidget;

namespace wren {

class Document;
class EditorTabs;
class Host;
class WorksheetRunner;

// The output of a command is inserted below the lines that were run, as it comes, up to kMostOutput: a command that
// never stops printing would fill the memory, and the file. Lines run in the directory in which the editor was started,
// which the plug-in knows as the Worksheet's. GUI thread.
class WorksheetActions : public QObject {
    Q_OBJECT
public:
    WorksheetActions(Host& host, EditorTabs& tabs); // borrowed
    ~WorksheetActions() override;

    static constexpr long kMostOutput = 16 << 20; // bytes of one run

    // The file that keeps it between sessions; "" without a state directory.
    static std::string File();

    bool IsWorksheet(const Document* document) const; // false for null
    bool IsRunning() const;
    void RunLines(); // of the current document, if it is the Worksheet
    void Stop();
    bool MayStop(QWidget* window); // true when nothing runs; else asks the user, and stops it after a "Yes"

    // The text of a document changes: output still to come follows the lines that it belongs to.
    void TextMoves(long document, long offset, long removed, long inserted);

signals:
    void StateChanged(); // a run began or ended
    void Told(const QString& text);

private:
    static constexpr size_t kLongestLine = 4096; // bytes

    void Put(const QByteArray& output);
    std::string InLines(std::string_view output);
    void Ended(int status, bool stopped);

    Host& host;
    EditorTabs& tabs;
    WorksheetRunner* runner;
    long document = 0; // where the output goes; 0 once it was closed
    long end = 0;      // behind the output so far
    long printed = 0;  // by this run, whether put there or not
    size_t column = 0; // of the line that is being printed
};

} // namespace wren
