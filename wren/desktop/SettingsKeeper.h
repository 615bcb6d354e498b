// Stores the settings while the editor runs.
#pragma once

#include <QObject>
#include <QTimer>

#include <string>

namespace wren {

class Host;

// A second after the last change, so that a crash takes none with it; nothing wakes up while nothing changes. GUI
// thread.
class SettingsKeeper : public QObject {
    Q_OBJECT
public:
    explicit SettingsKeeper(Host& host); // borrowed

    void Changed();                 // or may have: what is stored already is not written again
    bool Store(std::string* error); // at once; false, with the reason, when the file could not be written
    void StoreAtEnd();              // what has changed and can be stored in the middle of anything

signals:
    void Failed(const QString& reason); // to store a change

private:
    void StoreChange();

    Host& host;
    QTimer quiet;
};

} // namespace wren
