// What the user can do with the tabs as a row: close several, reopen a closed one, copy a path.
#pragma once

#include "wren/desktop/DocumentActions.h"

#include <QObject>

#include <string>
#include <vector>

class QMenu;
class QPoint;

namespace wren {

class EditorTabs;
class Host;

// The tabs' context menu and the middle button lead here, and so do the window's menus. GUI thread.
class TabActions : public QObject {
    Q_OBJECT
public:
    TabActions(Host& host, EditorTabs& tabs, DocumentActions& documents); // all borrowed

    // These raise the document and end at the first text that the user keeps open.
    void CloseOthers(long document);
    void CloseToTheRight(long document);

    void CopyPath(long document) const; // nothing is copied for a text without a file
    void ReopenClosed();                // the file that was closed last and is not open, with its caret
    bool CanReopen() const { return !closed.empty(); }

    void FillMenu(QMenu* menu, long document); // the context menu of its tab

private:
    struct ClosedFile {
        std::string path;
        long caret = 0; // bytes
    };

    bool eventFilter(QObject* bar, QEvent* event) override;
    void ShowMenu(const QPoint& place); // in the tab bar
    void CloseAll(const std::vector<long>& gone);
    void Remember(long document);
    std::string PathOf(long document) const; // "" for a text without a file

    Host& host;
    EditorTabs& tabs;
    DocumentActions& documents;
    std::vector<ClosedFile> closed; // the last one last; each path once
    long pressed = 0;               // the document whose tab the middle button went down on; 0 for none
};

} // namespace wren
