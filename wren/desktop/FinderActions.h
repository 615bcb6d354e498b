// Finding a text in all files of a project.
#pragma once

#include <QObject>

#include <string>

namespace wren {

class FilesFindBar;
class Host;
class MainWindow;
class SymbolActions;

// What is found is listed by the panel of matches. GUI thread.
class FinderActions : public QObject {
    Q_OBJECT
public:
    FinderActions(Host& host, MainWindow& window, SymbolActions& symbols); // all borrowed

    void Open(); // the bar, for the selection or the name at the caret
    void Find(); // what the bar says

    FilesFindBar& Bar();

private:
    std::string AtCaret() const;

    Host& host;
    MainWindow& window;
    SymbolActions& symbols;
    FilesFindBar* bar = nullptr; // made when it is needed
};

} // namespace wren
