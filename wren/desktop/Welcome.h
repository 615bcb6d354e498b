// What a user sees who has nothing open yet: what can be done next, and a tour.
#pragma once

#include "wren/desktop/EmptyHelp.h"
#include "wren/desktop/Tour.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <string>
#include <vector>

namespace wren {

class DocumentActions;
class Host;
class MainWindow;

// GUI thread.
class Welcome : public QObject {
    Q_OBJECT
public:
    struct Parts { // all borrowed
        Host& host;
        MainWindow& window;
        DocumentActions& documents;
        std::function<std::vector<std::string>()> recentFiles; // the last one first
        std::function<QString(const QString& item)> keysOf;    // of a menu's item, for people; "" for none
        std::function<void()> openPreferences;
        bool understandsNames = false; // else there is nothing to tour
    };
    explicit Welcome(Parts parts);
    ~Welcome() override;

    void Update(); // the current text has changed, or is another one
    void StartTour();

    const EmptyHelp& Help() const { return help; }
    Tour* TheTour() const { return tour; } // null when it was never started

private:
    EmptyHelp::Content Content();
    bool OpenAt(const std::string& path, long offset);

    const Parts parts;
    EmptyHelp help;
    QPointer<Tour> tour; // belongs to the window
};

} // namespace wren
