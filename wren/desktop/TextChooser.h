// Going from one open text to another: by last use, or from a list of all of them.
#pragma once

#include "wren/desktop/symbols/PaletteItem.h"

#include <QObject>

#include <string>
#include <vector>

namespace wren {

class EditorTabs;
class Host;
class MainWindow;
class Palette;
class TextSwitcher;

// A text is used when its tab is raised. GUI thread.
class TextChooser : public QObject {
    Q_OBJECT
public:
    TextChooser(Host& host, MainWindow& window); // borrowed

    // Opens the list by last use with the text marked that was used before, or the one that was used least. While it
    // is open, marks the next one. Without a modifier held there is nothing to let go of: the text is raised at once.
    void Step(bool back);
    void List(); // a field to narrow all of them by typing

    std::vector<long> ByLastUse() const; // the documents, the current one first
    TextSwitcher& Switcher();            // made when it is needed
    Palette& Listing();                  // the same

private:
    void Used(long document);
    void Raise(long document);
    void GiveKeyboardBack();
    PaletteItem ItemFor(long document) const;
    std::vector<PaletteItem> Items() const;

    Host& host;
    MainWindow& window;
    EditorTabs& tabs;
    TextSwitcher* switcher = nullptr;
    Palette* listing = nullptr;
    std::vector<long> used; // the last one first; some may be closed
};

} // namespace wren
