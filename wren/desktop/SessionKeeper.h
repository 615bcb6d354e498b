// Keeps the list of open files for the next start, and unsaved texts for the start after a crash.
#pragma once

#include "wren/desktop/display/GuiQueue.h"
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
class MainWindow;
class NoticeBar;

// The session and the copy of a text are written after a pause in changes, or at the latest a while after the first
// change. A copy that could not be written is retried later. Nothing wakes up while nothing changes. GUI thread.
//
// A text of usual size is copied half a second after the last change, and four seconds after the first one when there
// is no pause. Larger texts wait longer, as copying them delays the keys.
class SessionKeeper : public QObject {
    Q_OBJECT
public:
    struct Parts { // all borrowed
        Host& host;
        MainWindow& window; // whose place and panels are kept
        EditorTabs& tabs;
        NoticeBar& notices;
        FileKeeper& files;
        DocumentActions& documents;
        std::string folder = {}; // whose session it is; "" for none
    };
    explicit SessionKeeper(const Parts& parts);

    const SessionState& State() const { return state; }
    void Opened(const std::string& path); // among the recent files

    void TakeNews();      // from the threads that write; call it when the loop has woken
    void Restore();       // opens the files of the last session
    void OfferRecovery(); // asks about texts that a crash has left, if there are any

    // Keeps the list of files that are open now, for Restore(). An editor that was started for named files has not
    // restored the last session and leaves that list as it is. False when the session could not be written.
    bool Save();
    void KeepUnsaved(); // writes copies of all unsaved texts; they are on the disk when it returns
    void TextChanged(long document);
    void FilesChanged();         // a file was opened, closed or moved in the order of tabs
    void Settled(long document); // saved or closed: no copy is needed

    bool IsUnsafe() const { return !unsafe.empty(); } // the last copy of some text could not be written

    static constexpr std::chrono::milliseconds kPause{500};    // without a change, before it is kept
    static constexpr std::chrono::milliseconds kLongest{4000}; // from a change to its being kept
    static std::chrono::milliseconds MoreFor(long bytes);      // that a copy of so large a text waits

private:
    void TakeState(const SessionState& stored);
    void TakeOpenFiles();
    void KeepBookmarks(long document);
    void FindBookmarks(long document);
    void OpenLeft(const std::vector<UnsavedText>& left);
    const Document* OpenLeftText(const UnsavedText& text, const std::vector<UnsavedText>& left); // null for none
    void KeepChanged();
    struct WrittenCopy {
        long document = 0;
        std::string problem; // "" when it is on the disk
    };

    void KeepSession();
    void Keep(long document);
    void Kept(const WrittenCopy& copy);
    void Safe(long document);
    void Unsafe(long document, const std::string& reason);
    void TellUnsafe(const std::string& reason);
    void RetryPlace();
    void Withdraw();

    Host& host;
    MainWindow& window;
    const std::string folder;
    EditorTabs& tabs;
    NoticeBar& notices;
    FileKeeper& files;
    DocumentActions& documents;
    SessionState state;
    std::vector<std::string> opened;              // by this editor, the last one last
    std::vector<SessionState::MarkedFile> marked; // changed by this editor, the last one last
    bool restoring = false;
    bool ownsFiles = false; // the session's list of open files is this editor's
    bool filesChanged = false;
    std::set<long> changed; // since their last copy
    std::set<long> unsafe;  // the last copy could not be written
    std::string told;       // the reason that the notice gives
    QuietTimer quiet;
    QTimer again;
    CopyWriter sessionWriter;
    GuiQueue<WrittenCopy> news; // from the thread that writes copies
    Recovery recovery;          // last: its thread adds news until it is destroyed
};

} // namespace wren
