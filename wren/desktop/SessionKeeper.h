// What is open, kept for the next start; and what is not saved, kept for the start after a crash.
#pragma once

#include "wren/desktop/display/UpdateQueue.h"
#include "wren/desktop/state/CopyWriter.h"
#include "wren/desktop/state/QuietTimer.h"
#include "wren/desktop/state/Recovery.h"
#include "wren/desktop/state/SessionState.h"

#include <QTimer>

#include <chrono>
#include <set>
#include <string>
#include <vector>

namespace wren {

class Document;
class DocumentActions;
class EditorTabs;
class FileKeeper;
class Host;
class NoticeBar;

// The session, and a text's copy, are written once nothing has changed for a moment, or when that takes too long; and a
// copy that could not be written, again a while later. Nothing wakes up while nothing changes. GUI thread.
//
// A copy of a text of usual size is made half a second after the last change, and four seconds after the first one when
// there is no pause. Larger texts wait longer, as copying them holds up the keys.
class SessionKeeper : public QObject {
    Q_OBJECT
public:
    struct Parts { // all borrowed
        Host& host;
        QWidget& window; // whose place is kept
        EditorTabs& tabs;
        NoticeBar& notices;
        FileKeeper& files;
        DocumentActions& documents;
    };
    explicit SessionKeeper(const Parts& parts);

    const SessionState& State() const { return state; }
    void Opened(const std::string& path); // among the recent files

    void TakeNews();      // what the threads that write have to tell; when the loop was woken
    void Restore();       // opens the files of the last session
    void OfferRecovery(); // asks about what a crash has left, if it has

    // What is open now, for Restore(). An editor that has not restored the last session, since it was started for files
    // that were named, leaves that one as it is. False when it could not be kept.
    bool Save();
    void KeepUnsaved(); // copies of all unsaved texts, at once: they are on the disk afterwards
    void TextChanged(long document);
    void FilesChanged();         // others are open, or in another order
    void Settled(long document); // saved or closed: no copy is needed

    bool IsUnsafe() const { return !unsafe.empty(); } // the last copy of some text could not be written

    static constexpr std::chrono::milliseconds kPause{500};    // without a change, before it is kept
    static constexpr std::chrono::milliseconds kLongest{4000}; // from a change to its being kept
    static std::chrono::milliseconds MoreFor(long bytes);      // that a copy of so large a text waits

private:
    void TakeState(const SessionState& stored);
    void TakeOpenFiles();
    void OpenLeft(const std::vector<UnsavedText>& left);
    const Document* OpenLeftText(const UnsavedText& text, const std::vector<UnsavedText>& left); // null for none
    void KeepChanged();
    void KeepSession();
    void Keep(long document);
    void Kept(long document, const std::string& problem);
    void Safe(long document);
    void Unsafe(long document, const std::string& reason);
    void TellUnsafe(const std::string& reason);
    void RetryPlace();
    void Withdraw();

    Host& host;
    QWidget& window;
    EditorTabs& tabs;
    NoticeBar& notices;
    FileKeeper& files;
    DocumentActions& documents;
    SessionState state;
    std::vector<std::string> opened; // by this editor, the last one last
    bool restoring = false;
    bool ownsFiles = false; // the session's list of open files is this editor's
    bool filesChanged = false;
    std::set<long> changed; // since their last copy
    std::set<long> unsafe;  // the last copy could not be written
    std::string told;       // why
    QuietTimer quiet;
    QTimer again;
    CopyWriter sessionWriter;
    UpdateQueue news;  // of copies, from the thread that writes them
    Recovery recovery; // its thread tells of copies as long as it lives
};

} // namespace wren
