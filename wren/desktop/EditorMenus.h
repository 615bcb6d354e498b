// The menu bar and the tool bar: what can be chosen, and the keys that choose it.
#pragma once

#include "wren/core/KeyLines.h"
#include "wren/desktop/EditorActions.h"
#include "wren/desktop/state/MenuItem.h"

#include <QList>
#include <QObject>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class QAction;
class QMenu;

namespace wren {

class CommandChooser;
class Host;
class IndexMenu;
class KeyRouter;
class MainWindow;
struct NamedCommand;

// GUI thread.
class EditorMenus : public QObject {
    Q_OBJECT
public:
    struct Parts {
        MainWindow& window; // its bars are filled
        Host& host;
        KeyRouter& router;
        EditorActions actions;
        std::function<std::vector<std::string>()> recentFiles; // the last one first
        std::function<void()> startTour;                       // null: there is none
    };
    explicit EditorMenus(const Parts& parts); // borrows them all
    ~EditorMenus() override;

    // The commands' keys, in the notation of menus. A menu shows the keys of its commands. Qt runs nothing for a key
    // that two actions have; so the first command gets it, else the first of the menus' own items whose keys were
    // chosen, else the first of the others.
    void BindKeys(const CommandKeys& keys, const ItemKeys& chosen);
    QString KeysOf(const QString& item) const; // of one that is not a command, for people; "" for none
    std::vector<MenuItem> OwnItems() const;    // those that are not commands

    void ShowState(); // enables what can be chosen now
    void ShowUndo();  // the part of it that every edit may change

private:
    struct Item {
        QAction* action;
        QString menu;  // without "&"
        QString title; // with its menu's
        QList<QKeySequence> usual;
    };

    void FillFile(QMenu* menu);
    void FillEdit(QMenu* menu);
    void FillLines(QMenu* menu);
    void FillCarets(QMenu* menu);
    void FillEnds(QMenu* menu);
    void FillEncodings(QMenu* menu);
    void FillReloads(QMenu* menu);
    void FillSaves(QMenu* menu);
    void AddTextSwitches(QMenu* menu);
    void AddSplits(QMenu* menu);
    void FillFolds(QMenu* menu);
    void FillBookmarks(QMenu* menu);
    void FillSearch(QMenu* menu);
    void FillGo(QMenu* menu);
    void ShareKeysWithPlugin();
    void FillMeanings(QMenu* menu, SymbolActions& symbols);
    void FillView(QMenu* menu);
    void AddOutline(QMenu* menu, SymbolActions& symbols);
    void AddFiles(QMenu* menu, FilesActions& files);
    void AddIndex(QMenu* menu, SymbolActions& symbols);
    void FillWorksheet(QMenu* menu);
    void FillHelp(QMenu* menu);
    void FillTools();
    void FillRecent();
    void FillPluginItems();
    std::vector<QAction*> MakePluginItems(QMenu* menu);
    std::vector<NamedCommand> AllCommands();
    void ShowTextMenu(const QPoint& screen);
    void Run(const std::string& command); // the editor's own, or one that the plug-in has registered
    void ShowHelp();
    void ShowAbout();

    QAction* Add(QMenu* menu, const QString& text, const char* icon, const QList<QKeySequence>& keys,
                 const std::function<void()>& run);
    void BindItem(const Item& item, const QList<QKeySequence>& keys, QList<QKeySequence>& taken);
    QAction* CommandAction(const std::string& command);

    const Parts parts;
    std::unique_ptr<CommandChooser> chooser;
    std::unique_ptr<IndexMenu> indexMenu; // null where names are not understood
    QMenu* search = nullptr;
    QMenu* recent = nullptr;
    QAction* pluginItems = nullptr; // the plug-in's are before it
    std::vector<QAction*> shownPluginItems;
    std::vector<Item> items;                  // of the menus' own
    std::map<std::string, QAction*> commands; // by the command that they run
    QAction* save = nullptr;
    QAction* revert = nullptr;
    QAction* closeOthers = nullptr;
    QAction* closeRight = nullptr;
    QAction* reopen = nullptr;
    QAction* copyPath = nullptr;
    QAction* undo = nullptr;
    QAction* redo = nullptr;
    QAction* cut = nullptr;
    QAction* copy = nullptr;
    QAction* runLines = nullptr;
    QAction* stop = nullptr;
    QList<QAction*> aboutName; // what the menu of the text begins with; empty where names are not understood
    QList<QAction*> aboutText;
    QAction* definition = nullptr; // these two are null where names are not understood
    QAction* declaration = nullptr;
};

} // namespace wren
