#include "wren/desktop/EditorMenus.h"

#include "vetch/interface/BMenu.h"
#include "vetch/interface/BMenuItem.h"
#include "wren/core/Host.h"
#include "wren/desktop/Editor.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/FileKeeper.h"
#include "wren/desktop/GuiLoop.h"
#include "wren/desktop/Icons.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/PluginButton.h"
#include "wren/desktop/SessionKeeper.h"
#include "wren/desktop/WorksheetActions.h"
#include "wren/desktop/display/ShownText.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/FindBar.h"

#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QToolBar>

namespace wren {

namespace {

using Keys = QList<QKeySequence>;

Keys StandardKeys(QKeySequence::StandardKey key)
{
    return QKeySequence::keyBindings(key);
}

QKeySequence KeyFrom(const std::string& text)
{
    return QKeySequence::fromString(QString::fromStdString(text), QKeySequence::PortableText);
}

} // namespace

EditorMenus::EditorMenus(Editor& editor) : editor(editor)
{
    QMenuBar* bar = editor.Window().menuBar();
    FillFile(bar->addMenu(tr("&File")));
    FillEdit(bar->addMenu(tr("&Edit")));
    search = bar->addMenu(tr("&Search"));
    FillSearch(search);
    FillGo(bar->addMenu(tr("&Go")));
    FillView(bar->addMenu(tr("&View")));
    FillWorksheet(bar->addMenu(tr("&Worksheet")));
    FillHelp(bar->addMenu(tr("&Help")));
    FillTools();
    for (const CommandTable::Command& command : editor.TheHost().Commands().Registered())
        CommandAction(command.name);
    connect(&editor, &Editor::DocumentsChanged, this, &EditorMenus::ShowState);
    connect(&editor, &Editor::TextEdited, this, &EditorMenus::ShowUndo);
    connect(&editor.TheWorksheet(), &WorksheetActions::StateChanged, this, &EditorMenus::ShowState);
    ShowState();
}

void EditorMenus::BindKeys(const std::vector<std::pair<std::string, std::string>>& keys)
{
    std::map<std::string, Keys> byCommand;
    Keys taken;
    for (const auto& [command, key] : keys) {
        if (taken.contains(KeyFrom(key)))
            continue;
        taken.append(KeyFrom(key));
        byCommand[command].append(KeyFrom(key));
    }
    for (const auto& [command, action] : commands)
        action->setShortcuts(byCommand[command]);
    for (const auto& [action, usual] : usualKeys) {
        Keys left = usual;
        left.removeIf([&taken](const QKeySequence& key) { return taken.contains(key); });
        action->setShortcuts(left);
    }
}

std::vector<std::pair<QString, QKeySequence>> EditorMenus::OwnKeys() const
{
    std::vector<std::pair<QString, QKeySequence>> own;
    for (const auto& [action, usual] : usualKeys)
        for (const QKeySequence& key : usual)
            own.emplace_back(action->text().remove('&'), key);
    return own;
}

void EditorMenus::FillFile(QMenu* menu)
{
    Add(menu, tr("&New"), "document-new", StandardKeys(QKeySequence::New), [this] { editor.New(); });
    Add(menu, tr("&Open\u2026"), "document-open", StandardKeys(QKeySequence::Open), [this] { editor.OpenAsked(); });
    recent = menu->addMenu(tr("Open &Recent"));
    connect(recent, &QMenu::aboutToShow, this, &EditorMenus::FillRecent);
    menu->addSeparator();
    save = Add(menu, tr("&Save"), "document-save", StandardKeys(QKeySequence::Save), [this] { editor.Save(); });
    Add(menu, tr("Save &As\u2026"), "document-save-as", {QKeySequence(tr("Ctrl+Shift+S"))},
        [this] { editor.SaveAs(); });
    Add(menu, tr("Save A&ll"), "", {}, [this] { editor.SaveAll(); });
    revert = Add(menu, tr("Re&vert"), "document-revert", {}, [this] { editor.Revert(); });
    menu->addSeparator();
    Add(menu, tr("&Close"), "window-close", {QKeySequence(tr("Ctrl+W"))}, [this] { editor.CloseCurrent(); });
    Add(menu, tr("&Quit"), "application-exit", {QKeySequence(tr("Ctrl+Q"))}, [this] { editor.Window().close(); });
}

void EditorMenus::FillEdit(QMenu* menu)
{
    const auto onView = [this](void (QsciScintilla::*operation)()) {
        return [this, operation] {
            if (CodeView* view = editor.CurrentView())
                (view->*operation)();
        };
    };
    undo =
        Add(menu, tr("&Undo"), "edit-undo", StandardKeys(QKeySequence::Undo), [this] { editor.CurrentView()->undo(); });
    redo =
        Add(menu, tr("&Redo"), "edit-redo", StandardKeys(QKeySequence::Redo), [this] { editor.CurrentView()->redo(); });
    menu->addSeparator();
    cut = Add(menu, tr("Cu&t"), "edit-cut", StandardKeys(QKeySequence::Cut), [this] { editor.CurrentView()->cut(); });
    copy = Add(menu, tr("&Copy"), "edit-copy", StandardKeys(QKeySequence::Copy), onView(&QsciScintilla::copy));
    Add(menu, tr("&Paste"), "edit-paste", StandardKeys(QKeySequence::Paste), [this] { editor.CurrentView()->paste(); });
    Add(menu, tr("Select &All"), "edit-select-all", StandardKeys(QKeySequence::SelectAll),
        [this] { editor.CurrentView()->selectAll(true); });
    menu->addSeparator();
    menu->addAction(CommandAction("SymbolCompletion"));
    menu->addSeparator();
    Add(menu, tr("Pr&eferences\u2026"), "preferences-system", {QKeySequence(tr("Ctrl+,"))},
        [this] { editor.OpenPreferences(); });
    connect(menu, &QMenu::aboutToShow, this, &EditorMenus::ShowState);
}

void EditorMenus::FillSearch(QMenu* menu)
{
    FindBar& find = editor.Window().Find();
    Add(menu, tr("&Find and Replace\u2026"), "edit-find",
        StandardKeys(QKeySequence::Find) + Keys{QKeySequence(tr("Ctrl+H"))}, [&find] { find.Open(); });
    Add(menu, tr("Find &Next"), "", StandardKeys(QKeySequence::FindNext), [&find] { find.Next(); });
    Add(menu, tr("Find &Previous"), "", StandardKeys(QKeySequence::FindPrevious), [&find] { find.Previous(); });
    pluginItems = menu->addSeparator();
    pluginItems->setVisible(false);
    connect(menu, &QMenu::aboutToShow, this, &EditorMenus::FillPluginItems);
}

void EditorMenus::FillGo(QMenu* menu)
{
    menu->addAction(CommandAction("GoBack"));
    menu->addAction(CommandAction("GoForward"));
    menu->addSeparator();
    Add(menu, tr("Go to &Line\u2026"), "go-jump", {QKeySequence(tr("Ctrl+L"))}, [this] { editor.GoToLine(); });
    menu->addSeparator();
    const auto step = [this](int steps) {
        EditorTabs& tabs = editor.Window().Tabs();
        tabs.setCurrentIndex((tabs.currentIndex() + steps + tabs.count()) % tabs.count());
        tabs.currentWidget()->setFocus();
    };
    Add(menu, tr("&Next Document"), "", {QKeySequence(tr("Ctrl+PgDown"))}, [step] { step(1); });
    Add(menu, tr("&Previous Document"), "", {QKeySequence(tr("Ctrl+PgUp"))}, [step] { step(-1); });
}

void EditorMenus::FillView(QMenu* menu)
{
    Add(menu, tr("&Larger"), "zoom-in", {QKeySequence(tr("Ctrl++")), QKeySequence(tr("Ctrl+="))},
        [this] { editor.UseZoom(1); });
    Add(menu, tr("&Smaller"), "zoom-out", {QKeySequence(tr("Ctrl+-"))}, [this] { editor.UseZoom(-1); });
    Add(menu, tr("&Usual Size"), "zoom-original", {QKeySequence(tr("Ctrl+0"))}, [this] { editor.UseZoom(0); });
}

void EditorMenus::FillWorksheet(QMenu* menu)
{
    Add(menu, tr("&Open Worksheet"), "", {QKeySequence(tr("Ctrl+Shift+W"))}, [this] { editor.OpenWorksheet(); });
    runLines =
        Add(menu, tr("&Run Lines"), "system-run", {QKeySequence(tr("Ctrl+Return")), QKeySequence(tr("Ctrl+Enter"))},
            [this] { editor.TheWorksheet().RunLines(); });
    stop = Add(menu, tr("&Stop"), "process-stop", {QKeySequence(tr("Ctrl+Shift+Return"))},
               [this] { editor.TheWorksheet().Stop(); });
}

void EditorMenus::FillHelp(QMenu* menu)
{
    Add(menu, tr("About &Symbols"), "", {}, [this] { editor.AboutSymbols(); });
    Add(menu, tr("&About Wren"), "help-about", {}, [this] { editor.About(); });
}

void EditorMenus::FillTools()
{
    QToolBar& tools = editor.Window().Tools();
    tools.addAction(save);
    tools.addAction(undo);
    tools.addAction(redo);
    tools.addSeparator();
    tools.addAction(CommandAction("GoBack"));
    tools.addAction(CommandAction("GoForward"));
    tools.addSeparator();
    tools.addWidget(&editor.Window().Button());
}

void EditorMenus::FillRecent()
{
    recent->clear();
    for (const std::string& path : editor.Session().State().recentFiles)
        connect(recent->addAction(ShownLabel(path)), &QAction::triggered, this, [this, path] { editor.Open(path); });
    if (recent->isEmpty())
        recent->addAction(tr("None"))->setEnabled(false);
}

// The plug-in sets the state of its items when it is told that menus are about to show.
void EditorMenus::FillPluginItems()
{
    for (QAction* action : std::exchange(shownPluginItems, {}))
        delete action;
    Host& host = editor.TheHost();
    host.Events().MenusShowing();
    const BMenu& items = *host.MenuBar().Search();
    for (long index = 0; index < items.CountItems(); ++index) {
        const BMenuItem* item = items.ItemAt(index);
        auto* action = new QAction(ShownLabel(item->Label()), search);
        action->setSeparator(item->IsSeparator());
        action->setEnabled(item->IsEnabled());
        const std::string command = host.MenuBar().CommandOf(item);
        // The key runs the command by an action of its own; a second one with the same key would make it ambiguous.
        if (const auto bound = commands.find(command); bound != commands.end() && !bound->second->shortcut().isEmpty())
            action->setText(action->text() + '\t' + bound->second->shortcut().toString(QKeySequence::NativeText));
        connect(action, &QAction::triggered, this, [this, command] {
            editor.TheHost().Events().Command(command);
            editor.Loop().LetThrough();
        });
        search->insertAction(pluginItems, action);
        shownPluginItems.push_back(action);
    }
}

void EditorMenus::ShowState()
{
    const Document* document = editor.Current();
    const CodeView* view = editor.CurrentView();
    const bool any = document != nullptr && view != nullptr;
    save->setEnabled(any);
    revert->setEnabled(any && !document->Path().empty());
    for (QAction* action : {cut, copy})
        action->setEnabled(any);
    ShowUndo();
    commands["GoBack"]->setEnabled(editor.Places().CanGoBack());
    commands["GoForward"]->setEnabled(editor.Places().CanGoForward());
    const WorksheetActions& worksheet = editor.TheWorksheet();
    runLines->setEnabled(worksheet.IsWorksheet(document) && !worksheet.IsRunning());
    stop->setEnabled(worksheet.IsRunning());
}

void EditorMenus::ShowUndo()
{
    const CodeView* view = editor.CurrentView();
    undo->setEnabled(view != nullptr && view->isUndoAvailable());
    redo->setEnabled(view != nullptr && view->isRedoAvailable());
}

QAction* EditorMenus::Add(QMenu* menu, const QString& text, const char* icon, const QList<QKeySequence>& keys,
                          const std::function<void()>& run)
{
    QAction* action = menu->addAction(IconNamed(icon), text);
    action->setShortcuts(keys);
    usualKeys.emplace_back(action, keys);
    connect(action, &QAction::triggered, this, run);
    return action;
}

// One action a command, in the window itself, so that its keys work whatever menu shows it.
QAction* EditorMenus::CommandAction(const std::string& command)
{
    if (const auto found = commands.find(command); found != commands.end())
        return found->second;
    static const std::map<std::string, std::pair<QString, const char*>> kNames = {
        {"GoBack", {tr("&Back"), "go-previous"}},
        {"GoForward", {tr("&Forward"), "go-next"}},
        {"SymbolCompletion", {tr("Co&mplete Symbol"), ""}},
    };
    const auto named = kNames.find(command);
    auto* action = new QAction(named == kNames.end() ? QString::fromStdString(command) : named->second.first, this);
    if (named != kNames.end())
        action->setIcon(IconNamed(named->second.second));
    connect(action, &QAction::triggered, this, [this, command] { editor.Run(command); });
    editor.Window().addAction(action);
    commands[command] = action;
    return action;
}

} // namespace wren
