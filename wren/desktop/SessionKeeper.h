// What is open, kept for the next start; and what is not saved, kept for the start after a crash.
#pragma once

#include "wren/desktop/state/Recovery.h"
#include "wren/desktop/state/SessionState.h"

#include <QTimer>

#include <set>
#include <string>
#include <vector>

namespace wren {

class CodeView;
class Editor;

// A text's copy is written once nothing has been typed for a moment; nothing wakes up while nothing changes. GUI thread.
class SessionKeeper : public QObject {
    Q_OBJECT
public:
    explicit SessionKeeper(Editor& editor); // borrowed

    const SessionState& State() const { return state; }
    void Opened(const std::string& path); // among the recent files

    void Restore();       // opens the files of the last session
    void OfferRecovery(); // asks about what a crash has left, if it has

    // What is open now, for Restore(). An editor that has not restored the last session, since it was started for files
    // that were named, leaves that one as it is. False when it could not be kept.
    bool Save();
    void KeepUnsaved(); // copies of all unsaved texts, at once: they are on the disk afterwards
    void TextChanged(long document);
    void Settled(long document); // saved or closed: no copy is needed

private:
    void TakeOpenFiles();
    void KeepChanged();
    void Keep(long document);

    Editor& editor;
    SessionState state;
    std::vector<std::string> opened; // by this editor, the last one last
    bool restored = false;
    QTimer quiet;
    std::set<long> changed; // since their last copy
    std::string told;       // of copies that could not be written
    Recovery recovery;      // its thread tells of them as long as it lives
};

} // namespace wren
