// Where the screens are, for threads that may not ask Qt.
#pragma once

#include "vetch/support/Geometry.h"

#include <QObject>

#include <mutex>
#include <vector>

class QScreen;

namespace wren {

// Made on the GUI thread, and kept up to date there. Needs a QApplication.
class ScreenTable {
public:
    ScreenTable();

    BRect Usable(BPoint where) const; // of the screen that holds the point, or else of the nearest one. Any thread

private:
    void Watch(QScreen* screen);
    void Read();

    QObject connections;       // end with it
    mutable std::mutex mutex;  // a leaf, guards 'usable'
    std::vector<BRect> usable; // empty only before there was a screen
};

} // namespace wren
