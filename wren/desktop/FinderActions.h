// Finding and replacing a text in all files of a project.
#pragma once

#include "wren/desktop/ReplaceActions.h"

#include <QObject>

#include <optional>
#include <string>

namespace wren {

class FilesFindBar;
class Host;
class MainWindow;
class SymbolActions;

// What is found is listed by the panel of matches, replacements by a panel of their own. GUI thread.
class FinderActions : public QObject {
    Q_OBJECT
public:
    FinderActions(Host& host, MainWindow& window, SymbolActions& symbols); // all borrowed

    void Open();        // the bar, for the selection or the name at the caret
    void OpenReplace(); // the same, with the field of the replacement
    void Find();        // what the bar says
    void Preview();     // its replacements

    FilesFindBar& Bar();
    ReplaceActions& Replacing() { return replacing; }

private:
    std::optional<FilesAsked> AskedInBar(); // absent when the bar has said what is wrong
    std::string AtCaret() const;

    Host& host;
    MainWindow& window;
    SymbolActions& symbols;
    ReplaceActions replacing;
    FilesFindBar* bar = nullptr; // made when it is needed
};

} // namespace wren
