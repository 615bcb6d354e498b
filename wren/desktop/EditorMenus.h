// The menu bar and the tool bar: what can be chosen, and the keys that choose it.
#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>

#include <map>
#include <string>
#include <utility>
#include <vector>

class QAction;
class QMenu;

namespace wren {

class Editor;

// GUI thread.
class EditorMenus : public QObject {
    Q_OBJECT
public:
    explicit EditorMenus(Editor& editor); // borrowed; fills its window's bars

    // The commands' keys, in the notation of menus; those of a command that is in a menu are shown there. A key that
    // two have runs neither, so it is the first command's; and no longer that of the menus' own items.
    void BindKeys(const std::vector<std::pair<std::string, std::string>>& keys);
    std::vector<std::pair<QString, QKeySequence>> OwnKeys() const; // and what they choose, while no command has them

private:
    void FillFile(QMenu* menu);
    void FillEdit(QMenu* menu);
    void FillSearch(QMenu* menu);
    void FillGo(QMenu* menu);
    void FillView(QMenu* menu);
    void FillWorksheet(QMenu* menu);
    void FillHelp(QMenu* menu);
    void FillTools();
    void FillRecent();
    void FillPluginItems();
    void ShowState(); // which can be chosen now
    void ShowUndo();  // and of those, what every edit may change

    QAction* Add(QMenu* menu, const QString& text, const char* icon, const QList<QKeySequence>& keys,
                 const std::function<void()>& run);
    QAction* CommandAction(const std::string& command);

    Editor& editor;
    QMenu* search = nullptr;
    QMenu* recent = nullptr;
    QAction* pluginItems = nullptr; // the plug-in's are before it
    std::vector<QAction*> shownPluginItems;
    std::vector<std::pair<QAction*, QList<QKeySequence>>> usualKeys; // of the menus' own items
    std::map<std::string, QAction*> commands;                        // by the command that they run
    QAction* save = nullptr;
    QAction* revert = nullptr;
    QAction* undo = nullptr;
    QAction* redo = nullptr;
    QAction* cut = nullptr;
    QAction* copy = nullptr;
    QAction* runLines = nullptr;
    QAction* stop = nullptr;
};

} // namespace wren
