// Ends the editor on a signal, as when the desktop session is closed.
#pragma once

#include <QObject>

namespace wren {

class Editor;

// On SIGTERM, SIGINT and SIGHUP the session, copies of all unsaved texts and changed settings are kept, and the process
// ends without a question: the user may not be there to answer. One at a time; GUI thread.
class Endings : public QObject {
    Q_OBJECT
public:
    explicit Endings(Editor& editor); // borrowed
    ~Endings() override;

private:
    void End();

    Editor& editor;
};

} // namespace wren
