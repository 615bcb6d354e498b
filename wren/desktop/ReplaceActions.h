// Replacing a text in all files of a project.
#pragma once

#include "wren/desktop/finder/ReplaceModel.h"
#include "wren/desktop/symbols/FilesQuestion.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <deque>

namespace wren {

class Host;
class MainWindow;
class ReplacePanel;
class SymbolActions;

// What is replaced is shown first. Open texts get one edit each, which is undone as one; other files are written, one
// in a turn of the event loop. GUI thread.
class ReplaceActions : public QObject {
    Q_OBJECT
public:
    ReplaceActions(Host& host, MainWindow& window, SymbolActions& symbols); // all borrowed

    void Preview(const FilesAsked& asked);
    void Apply(); // what is checked
    bool IsApplying() const { return !waiting.empty(); }

    ReplacePanel& Panel();

signals:
    void Failed(const QString& problem); // of the search, or what was left out

private:
    void ApplyNext();
    std::string ReplaceIn(const ReplaceModel::Chosen& chosen); // why it was not done; "" when it was
    std::string ReplaceInText(const ReplaceModel::Chosen& chosen, long document);
    void Tell();

    Host& host;
    MainWindow& window;
    SymbolActions& symbols;
    ReplacePanel* panel = nullptr; // made when it is needed
    QTimer turn;
    std::deque<ReplaceModel::Chosen> waiting;
    size_t replaced = 0; // matches
    size_t files = 0;
    QStringList refused;
};

} // namespace wren
