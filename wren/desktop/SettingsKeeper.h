// Stores the settings while the editor runs.
#pragma once

#include <QObject>
#include <QTimer>

#include <string>

namespace wren {

class Host;

// Stores them a second after the last change, so that a crash loses no change. Nothing wakes up while nothing changes.
// GUI thread.
class SettingsKeeper : public QObject {
    Q_OBJECT
public:
    explicit SettingsKeeper(Host& host); // borrowed

    void Changed();                 // call it for a possible change, too: equal settings are not written again
    bool Store(std::string* error); // at once; false, with the reason, when the file could not be written
    void StoreAtEnd();              // stores a change at once, unless a plug-in call makes that impossible

signals:
    void Failed(const QString& reason); // to store a change

private:
    void StoreChange();

    Host& host;
    QTimer quiet;
};

} // namespace wren
