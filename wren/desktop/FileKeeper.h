// The files of the documents: reading, saving, and changes by other programs.
#pragma once

#include "wren/desktop/state/FileText.h"

#include <QObject>

#include <functional>
#include <map>
#include <optional>
#include <string>

namespace wren {

class CodeView;
class Document;
class EditorTabs;
class FileWatch;
class Host;
class NoticeBar;

// No text is lost: a document that could not be saved stays open, and when another program changes the file of a
// modified document, the user is notified and the text is kept. The Worksheet causes no questions: saving it takes in
// what another editor has added to its file. GUI thread.
class FileKeeper : public QObject {
    Q_OBJECT
public:
    FileKeeper(Host& host, EditorTabs& tabs, NoticeBar& notices, QWidget& window); // borrowed
    ~FileKeeper() override;

    // Reads the text of a file that is to be opened; see DecodeAs() for 'expected'. A text that is not UTF-8 is taken
    // in the encoding that is configured for it. Nullopt, with the reason in '*error', when the file cannot be read.
    std::optional<FileText> Read(const std::string& path, const TextEncoding& expected, std::string* error) const;
    std::function<TextEncoding(const std::string& path)> configured; // null: nothing is

    // Call it right after a document was opened: it watches the file from then on. 'mark' is the state in which the
    // file was read for it; absent when it was not.
    void Opened(Document& document, const std::optional<FileMark>& mark = {});
    void Closed(long document);
    FileMark Known(long document) const; // the state of the file that its text was made from
    // The document has got a text that was made from the file as it was in another session.
    void Recovered(const Document& document, const FileMark& was);
    void Check(); // looks at all files; call it when the user comes back to the window

    // True when it is saved. SaveAs(), and Save() of a document without a file, ask the user for a file. Save() asks
    // before it overwrites another program's changes.
    bool Save(Document& document);
    bool SaveAs(Document& document);

    void Revert(Document& document); // loads the file's text, after a question when there are unsaved changes

    // The same, with its bytes taken in that encoding; and saving in it. The user is told when that cannot be done, and
    // the document keeps the encoding that it had.
    void ReloadIn(Document& document, const TextEncoding& encoding);
    bool SaveIn(Document& document, const TextEncoding& encoding);

    // Asks about unsaved changes, and about a text whose file is gone; false when the document is to stay open. The
    // Worksheet is saved, and the user is asked only when that failed.
    bool MayGo(Document& document);

    bool IsModified(const Document& document) const;

signals:
    void Saved(long document); // possibly under another name
    void ReadAgain(long document);

private:
    bool IsGone(const Document& document) const;             // it had a file, which no longer exists
    bool Write(Document& document, const std::string& path); // it has that path from then on
    bool WriteText(const std::string& path, const std::string& text);
    bool MayOverwrite(const Document& document);
    void TakeInOthersLines(Document& worksheet);
    bool MayDiscard(const Document& document);
    void Reload(Document& document);
    void TakeAgain(Document& document, const FileText& read);
    void KnowAs(const Document& document, const FileMark& mark);
    void ChangedOnDisk(long document);
    void GoneFromDisk(long document);
    void BackOnDisk(long document);
    void Complain(const std::string& error);
    CodeView* ViewOf(const Document& document) const;

    Host& host;
    EditorTabs& tabs;
    NoticeBar& notices;
    QWidget& window;
    FileWatch* watch;
    std::map<long, FileMark> known; // what each document's file was when it was read or written
    std::string knownWorksheet;     // the same for the Worksheet, as a text
};

} // namespace wren
