// Opening, saving and closing documents.
#pragma once

#include "wren/desktop/state/FileMark.h"
#include "wren/text/Place.h"
#include "wren/text/TextEncoding.h"

#include <QObject>

#include <optional>
#include <string>

namespace wren {

class CodeViewClient;
class Document;
class DocumentLabels;
class FileKeeper;
class GuiLoop;
class Host;
class MainWindow;
class WorksheetActions;

// The absolute form of a path, byte by byte, as names of files need not be UTF-8. A relative path stays relative when
// the current directory no longer exists.
std::string AbsolutePath(const std::string& path);

// What the user can do with documents. A failure is shown to the user before an operation returns. GUI thread.
class DocumentActions : public QObject {
    Q_OBJECT
public:
    struct Parts { // all borrowed
        Host& host;
        MainWindow& window;
        GuiLoop& loop;
        FileKeeper& files;
        WorksheetActions& worksheet;
        DocumentLabels& labels;
        CodeViewClient& viewClient; // of the views of all documents
    };
    explicit DocumentActions(const Parts& parts);

    // Opens the file, or raises its tab. Lines and columns count from 1, columns in bytes; 0 for none. False when the
    // file could not be read.
    bool Open(const std::string& path, long line = 0, long column = 0);
    bool OpenIn(const std::string& path, const TextEncoding& expected); // as it was read last
    void OpenOrNew(const Place& place); // a file that does not exist becomes a new document of that name
    void OpenChosen();                  // asks the user for the files

    // Opens the file and replaces its text with 'text' as an edit: the document counts as modified, and the edit can
    // be undone. "" for a document without a file.
    bool OpenUnsaved(const std::string& path, const std::string& text, const TextEncoding& encoding = {});
    void OpenWorksheet(); // raises it, with the caret at its end

    // Opens a file, or 'text' in its place, as the Worksheet and raises it. Null, with the reason in '*error', when the
    // file cannot be read.
    Document* OpenAsWorksheet(const std::string& path, const std::optional<std::string>& text, std::string* error);
    void New();
    void NewWithText(const std::string& text); // which the user is not asked to save

    void Save(); // Save(), SaveAs(), Revert() and CloseCurrent() act on the current document, if there is one
    void SaveAs();
    void SaveAll();
    void Revert();
    void ReloadIn(const TextEncoding& encoding); // as these two, of the current document
    void SaveIn(const TextEncoding& encoding);
    void CloseCurrent();
    bool Close(long document); // asks about unsaved changes; false when the user keeps the document open

    // Called when something happened to a document.
    void Raised(long document); // its tab is the current one
    void Saved(long document);
    void ModifiedSet(long document, bool modified);

signals:
    void Changed();                       // a document was opened, closed, raised, edited, saved or renamed
    void Opened(const std::string& path); // or saved under this name, by the user
    void Loaded(long document);           // it has its text now, and is not raised yet
    void Named(long document, const std::string& path); // opened or saved: this is its path now
    void Settled(long document);                        // saved, or about to close: no copy of its text is needed
    void Closing(long document);
    void ZoomAsked(int steps);            // in a view
    void MenuAsked(const QPoint& screen); // in a view
    void Warned(const QString& text);     // about a failure that lost nothing

private:
    void OpenNew(const std::string& absolute); // saving the document makes the file
    Document* LoadNew(const std::string& absolute);
    Document* Load(const std::string& absolute, const TextEncoding& expected, std::string* error); // null: not read
    // Sets up a document that was just opened; null for null. The mark is that of the file that was read for it.
    Document* Adopt(Document* document, const std::optional<FileMark>& mark = {});
    bool OpenExpecting(const std::string& path, const TextEncoding& expected);

    Host& host;
    MainWindow& window;
    GuiLoop& loop;
    FileKeeper& files;
    WorksheetActions& worksheet;
    DocumentLabels& labels;
    CodeViewClient& viewClient;
};

} // namespace wren
