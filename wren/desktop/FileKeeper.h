// The files of the documents: reading, saving, and what other programs do to them meanwhile.
#pragma once

#include "wren/desktop/state/FileMark.h"

#include <QObject>

#include <map>
#include <string>

namespace wren {

class CodeView;
class Document;
class EditorTabs;
class FileWatch;
class Host;
class NoticeBar;

// No text is lost: what could not be saved stays open, and what another program wrote over unsaved changes is told, not
// taken. Of the Worksheet nobody is asked: what another editor has put into its file is taken in when it is saved. GUI
// thread.
class FileKeeper : public QObject {
    Q_OBJECT
public:
    FileKeeper(Host& host, EditorTabs& tabs, NoticeBar& notices, QWidget& window); // borrowed
    ~FileKeeper() override;

    // Right after a document was opened: from now on its file is watched.
    void Opened(Document& document);
    void Closed(long document);
    FileMark Known(long document) const; // what its text was made from
    // Its text, put there since, was made from what the file was in another session.
    void Recovered(const Document& document, const FileMark& was);
    void Check(); // looks at all files: the user has come back from somewhere

    // True when it is saved. Without a file, and for SaveAs(), the user is asked for one; a question may come before.
    bool Save(Document& document);
    bool SaveAs(Document& document);

    void Revert(Document& document); // takes the file's text, after a question when there are unsaved changes

    // Asks about unsaved changes, and about a text whose file is gone; false when the document is to stay. The
    // Worksheet is saved, and asked about only where it could not be.
    bool MayGo(Document& document);

    bool IsModified(const Document& document) const;

signals:
    void Saved(long document); // its name may be another one now
    void ReadAgain(long document);

private:
    bool IsGone(const Document& document) const;             // there was a file of it
    bool Write(Document& document, const std::string& path); // it has that path from then on
    bool WriteText(const std::string& path, const std::string& text);
    bool MayOverwrite(const Document& document);
    void TakeInOthersLines(Document& worksheet);
    bool Reload(Document& document);
    void KnowAs(const Document& document, const FileStamp& stamp, const std::string& text);
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
    std::string knownWorksheet;     // the same of the Worksheet's, as a text
};

} // namespace wren
