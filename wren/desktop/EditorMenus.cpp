#include "wren/desktop/EditorMenus.h"

#include "vetch/interface/BMenu.h"
#include "vetch/interface/BMenuItem.h"
#include "wren/core/Host.h"
#include "wren/core/PluginBundle.h"
#include "wren/desktop/CommandChooser.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/Icons.h"
#include "wren/desktop/IndexMenu.h"
#include "wren/desktop/KeyRouter.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/PluginButton.h"
#include "wren/desktop/Printing.h"
#include "wren/desktop/StatusLine.h"
#include "wren/desktop/display/ShownText.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/FindBar.h"

#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QMessageBox>
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

QString Plain(QString label)
{
    return label.remove('&').remove(QChar(0x2026));
}

// "Find and Replace..." is FindAndReplace. The settings name items so: a label that changes loses the keys that a user
// has chosen for its item.
QString IdFrom(const QString& label)
{
    QString id;
    for (const QString& word : Plain(label).split(' ', Qt::SkipEmptyParts))
        id += word.left(1).toUpper() + word.mid(1);
    return id;
}

} // namespace

EditorMenus::EditorMenus(const Parts& parts) : parts(parts)
{
    QMenuBar* bar = parts.window.menuBar();
    FillFile(bar->addMenu(tr("&File")));
    FillEdit(bar->addMenu(tr("&Edit")));
    search = bar->addMenu(tr("&Search"));
    FillSearch(search);
    FillGo(bar->addMenu(tr("&Go")));
    FillView(bar->addMenu(tr("&View")));
    FillWorksheet(bar->addMenu(tr("&Worksheet")));
    FillHelp(bar->addMenu(tr("&Help")));
    FillTools();
    for (const CommandTable::Command& command : parts.host.Commands().Registered())
        CommandAction(command.name);
    connect(&parts.actions.documents, &DocumentActions::Changed, this, &EditorMenus::ShowState);
    connect(&parts.actions.documents, &DocumentActions::MenuAsked, this, &EditorMenus::ShowTextMenu);
    connect(&parts.actions.worksheet, &WorksheetActions::StateChanged, this, &EditorMenus::ShowState);
    ShowState();
}

EditorMenus::~EditorMenus() = default;

void EditorMenus::BindKeys(const CommandKeys& keys, const ItemKeys& chosen)
{
    ShareKeysWithPlugin();
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
    for (const Item& item : items)
        if (const auto own = chosen.find(item.action->objectName().toStdString()); own != chosen.end()) {
            Keys wanted;
            for (const std::string& key : own->second)
                wanted.append(KeyFrom(key));
            BindItem(item, wanted, taken);
        }
    for (const Item& item : items)
        if (!chosen.contains(item.action->objectName().toStdString()))
            BindItem(item, item.usual, taken);
}

// With those of the keys that are still free.
void EditorMenus::BindItem(const Item& item, const Keys& keys, Keys& taken)
{
    Keys left = keys;
    left.removeIf([&taken](const QKeySequence& key) { return taken.contains(key); });
    taken += left;
    item.action->setShortcuts(left);
}

// The keys that the plug-in's lookups do not have by default (see DefaultKeys).
void EditorMenus::ShareKeysWithPlugin()
{
    const bool byMeaning = parts.actions.preferences.Values().HasMeaningKeys();
    for (auto& [action, menu, title, usual] : items) {
        if (action == definition)
            usual = {QKeySequence(byMeaning ? tr("F12") : tr("Alt+F12"))};
        else if (action == declaration)
            usual = {QKeySequence(byMeaning ? tr("Ctrl+F12") : tr("Alt+Shift+F12"))};
    }
}

std::vector<MenuItem> EditorMenus::OwnItems() const
{
    std::vector<MenuItem> own;
    for (const Item& item : items)
        own.push_back({item.action->objectName().toStdString(), item.title, item.usual});
    return own;
}

QString EditorMenus::KeysOf(const QString& item) const
{
    for (const Item& each : items)
        if (each.action->text().remove('&') == item)
            return each.action->shortcut().toString(QKeySequence::NativeText);
    return "";
}

void EditorMenus::FillFile(QMenu* menu)
{
    Add(menu, tr("&New"), "document-new", StandardKeys(QKeySequence::New), [this] { parts.actions.documents.New(); });
    Add(menu, tr("&Open\u2026"), "document-open", StandardKeys(QKeySequence::Open),
        [this] { parts.actions.documents.OpenChosen(); });
    recent = menu->addMenu(tr("Open &Recent"));
    connect(recent, &QMenu::aboutToShow, this, &EditorMenus::FillRecent);
    menu->addSeparator();
    save = Add(menu, tr("&Save"), "document-save", StandardKeys(QKeySequence::Save),
               [this] { parts.actions.documents.Save(); });
    Add(menu, tr("Save &As\u2026"), "document-save-as", {QKeySequence(tr("Ctrl+Shift+S"))},
        [this] { parts.actions.documents.SaveAs(); });
    Add(menu, tr("Save A&ll"), "", {}, [this] { parts.actions.documents.SaveAll(); });
    revert = Add(menu, tr("Re&vert"), "document-revert", {}, [this] { parts.actions.documents.Revert(); });
    menu->addSeparator();
    Add(menu, tr("&Print\u2026"), "document-print", {}, [this] {
        CodeView* view = parts.window.Tabs().CurrentView();
        if (const Document* document = parts.host.Current(); document != nullptr && view != nullptr)
            PrintAsked(parts.window, *document, *view);
    });
    menu->addSeparator();
    Add(menu, tr("&Close"), "window-close", {QKeySequence(tr("Ctrl+W"))},
        [this] { parts.actions.documents.CloseCurrent(); });
    QMenu* row = menu->addMenu(tr("&Tabs"));
    closeOthers = Add(row, tr("Close &Others"), "", {},
                      [this] { parts.actions.tabs.CloseOthers(parts.window.Tabs().CurrentDocument()); });
    closeRight = Add(row, tr("Close to the &Right"), "", {},
                     [this] { parts.actions.tabs.CloseToTheRight(parts.window.Tabs().CurrentDocument()); });
    reopen = Add(row, tr("R&eopen Closed File"), "", {QKeySequence(tr("Ctrl+Shift+T"))},
                 [this] { parts.actions.tabs.ReopenClosed(); });
    row->addSeparator();
    connect(row, &QMenu::aboutToShow, this, &EditorMenus::ShowState); // tabs can be dragged
    copyPath = Add(row, tr("Copy &Path"), "", {},
                   [this] { parts.actions.tabs.CopyPath(parts.window.Tabs().CurrentDocument()); });
    Add(menu, tr("&Quit"), "application-exit", {QKeySequence(tr("Ctrl+Q"))}, [this] { parts.window.close(); });
}

void EditorMenus::FillEdit(QMenu* menu)
{
    const auto onView = [this](void (QsciScintilla::*operation)()) {
        return [this, operation] {
            if (CodeView* view = parts.window.Tabs().CurrentView())
                (view->*operation)();
        };
    };
    undo = Add(menu, tr("&Undo"), "edit-undo", StandardKeys(QKeySequence::Undo),
               [this] { parts.window.Tabs().CurrentView()->undo(); });
    redo = Add(menu, tr("&Redo"), "edit-redo", StandardKeys(QKeySequence::Redo),
               [this] { parts.window.Tabs().CurrentView()->redo(); });
    menu->addSeparator();
    cut = Add(menu, tr("Cu&t"), "edit-cut", StandardKeys(QKeySequence::Cut),
              [this] { parts.window.Tabs().CurrentView()->cut(); });
    copy = Add(menu, tr("&Copy"), "edit-copy", StandardKeys(QKeySequence::Copy), onView(&QsciScintilla::copy));
    QAction* paste = Add(menu, tr("&Paste"), "edit-paste", StandardKeys(QKeySequence::Paste),
                         [this] { parts.window.Tabs().CurrentView()->paste(); });
    QAction* all = Add(menu, tr("Select &All"), "edit-select-all", StandardKeys(QKeySequence::SelectAll),
                       [this] { parts.window.Tabs().CurrentView()->selectAll(true); });
    aboutText = {undo, redo, cut, copy, paste, all};
    menu->addSeparator();
    FillLines(menu->addMenu(tr("&Lines")));
    FillCarets(menu->addMenu(tr("Carets a&nd Selections")));
    FillEnds(menu->addMenu(tr("Line &Ends")));
    FillEncodings(menu->addMenu(tr("Enco&ding")));
    menu->addAction(CommandAction("SymbolCompletion"));
    menu->addSeparator();
    Add(menu, tr("Pr&eferences\u2026"), "preferences-system", {QKeySequence(tr("Ctrl+,"))},
        [this] { parts.actions.preferences.Open(); });
    connect(menu, &QMenu::aboutToShow, this, &EditorMenus::ShowState);
}

void EditorMenus::FillSearch(QMenu* menu)
{
    FindBar& find = parts.window.Find();
    Add(menu, tr("&Find and Replace\u2026"), "edit-find",
        StandardKeys(QKeySequence::Find) + Keys{QKeySequence(tr("Ctrl+H"))}, [&find] { find.Open(); });
    Add(menu, tr("Find &Next"), "", StandardKeys(QKeySequence::FindNext), [&find] { find.Next(); });
    Add(menu, tr("Find &Previous"), "", StandardKeys(QKeySequence::FindPrevious), [&find] { find.Previous(); });
    if (FinderActions* finder = parts.actions.finder) {
        Add(menu, tr("Find in &Files\u2026"), "", {QKeySequence(tr("Ctrl+Shift+F"))}, [finder] { finder->Open(); });
        Add(menu, tr("&Replace in Files\u2026"), "", {QKeySequence(tr("Ctrl+Shift+H"))},
            [finder] { finder->OpenReplace(); });
    }
    pluginItems = menu->addSeparator();
    pluginItems->setVisible(false);
    StatusLine& status = parts.window.Status();
    QAction* stopTags = Add(menu, tr("&Stop Making Tags"), "", {}, [&status] { emit status.StopAsked(); });
    connect(menu, &QMenu::aboutToShow, stopTags, [&status, stopTags] { stopTags->setEnabled(status.IsMakingTags()); });
    connect(menu, &QMenu::aboutToShow, this, &EditorMenus::FillPluginItems);
}

void EditorMenus::FillGo(QMenu* menu)
{
    menu->addAction(CommandAction("GoBack"));
    menu->addAction(CommandAction("GoForward"));
    if (parts.actions.symbols != nullptr)
        FillMeanings(menu, *parts.actions.symbols);
    menu->addSeparator();
    Add(menu, tr("Go to &Line\u2026"), "go-jump", {QKeySequence(tr("Ctrl+L"))},
        [this] { parts.actions.places.GoToLine(); });
    menu->addSeparator();
    FillBookmarks(menu->addMenu(tr("&Bookmarks")));
    menu->addSeparator();
    const auto step = [this](int steps) {
        EditorTabs& tabs = parts.window.Tabs();
        tabs.setCurrentIndex((tabs.currentIndex() + steps + tabs.count()) % tabs.count());
        tabs.FocusCurrent();
    };
    Add(menu, tr("&Next Document"), "", {QKeySequence(tr("Ctrl+PgDown"))}, [step] { step(1); });
    Add(menu, tr("&Previous Document"), "", {QKeySequence(tr("Ctrl+PgUp"))}, [step] { step(-1); });
    TextChooser& texts = parts.actions.texts;
    Add(menu, tr("Last &Used Document"), "", {QKeySequence(tr("Ctrl+Tab"))}, [&texts] { texts.Step(false); });
    Add(menu, tr("Least &Recently Used Document"), "", {QKeySequence(tr("Ctrl+Shift+Tab"))},
        [&texts] { texts.Step(true); });
    Add(menu, tr("Open &Documents\u2026"), "", {QKeySequence(tr("Ctrl+E"))}, [&texts] { texts.List(); });
}

void EditorMenus::FillMeanings(QMenu* menu, SymbolActions& symbols)
{
    menu->addSeparator();
    definition = Add(menu, tr("&Definition"), "", {}, [&symbols] { symbols.GoTo(Wanted::Definition); });
    declaration = Add(menu, tr("De&claration"), "", {}, [&symbols] { symbols.GoTo(Wanted::Declaration); });
    QAction* implementations =
        Add(menu, tr("&Implementations"), "", {}, [&symbols] { symbols.GoTo(Wanted::Implementations); });
    QAction* references =
        Add(menu, tr("&References"), "", {QKeySequence(tr("Shift+F12"))}, [&symbols] { symbols.ListReferences(); });
    QAction* meaning =
        Add(menu, tr("What It &Means"), "", {QKeySequence(tr("Ctrl+I"))}, [&symbols] { symbols.Help().ShowMeaning(); });
    aboutName = {definition, declaration, implementations, references, meaning};
    Add(menu, tr("What the &Call Takes"), "", {QKeySequence(tr("Ctrl+Shift+Space"))},
        [&symbols] { symbols.Help().ShowCall(); });
    Add(menu, tr("Ne&xt Match"), "", {QKeySequence(tr("F4"))}, [&symbols] { symbols.Step(false); });
    Add(menu, tr("Pre&vious Match"), "", {QKeySequence(tr("Shift+F4"))}, [&symbols] { symbols.Step(true); });
    menu->addSeparator();
    Add(menu, tr("Go to &Symbol\u2026"), "", {QKeySequence(tr("Ctrl+T"))},
        [&symbols] { symbols.Palettes().GoToSymbol(); });
    Add(menu, tr("Go to F&ile\u2026"), "", {QKeySequence(tr("Ctrl+P"))}, [&symbols] { symbols.Palettes().GoToFile(); });
    Add(menu, tr("&Header or Source"), "", {QKeySequence(tr("Alt+O"))}, [&symbols] { symbols.GoToOtherHalf(); });
    Add(menu, tr("Go to Symbol of This &Text\u2026"), "", {QKeySequence(tr("Ctrl+Shift+O"))},
        [&symbols] { symbols.Palettes().GoToSymbolOfText(); });
    Add(menu, tr("Go to Symbol of This Sc&ope\u2026"), "", {QKeySequence(tr("Ctrl+Shift+J"))},
        [&symbols] { symbols.Outlines().OpenScope(); });
    AddIndex(menu, symbols);
}

void EditorMenus::AddIndex(QMenu* menu, SymbolActions& symbols)
{
    menu->addSeparator();
    QAction* refresh = Add(menu, tr("Refresh Inde&x"), "", {}, [&symbols] { symbols.RefreshIndex(); });
    QAction* stopIndexing = Add(menu, tr("Stop Indexin&g"), "process-stop", {}, [&symbols] { symbols.StopIndexing(); });
    const auto showState = [stopIndexing, &symbols] { stopIndexing->setEnabled(symbols.Engine().IsIndexing()); };
    connect(menu, &QMenu::aboutToShow, this, showState);
    const auto current = [this] {
        const Document* document = parts.host.Current();
        return document == nullptr ? std::string() : document->Path();
    };
    indexMenu = std::make_unique<IndexMenu>(symbols, current, refresh, stopIndexing);
    connect(indexMenu.get(), &QMenu::aboutToShow, this, showState);
    parts.window.Status().SetIndexMenu(indexMenu.get());
}

void EditorMenus::FillView(QMenu* menu)
{
    Add(menu, tr("&Larger"), "zoom-in", {QKeySequence(tr("Ctrl++")), QKeySequence(tr("Ctrl+="))},
        [this] { parts.actions.preferences.UseZoom(1); });
    Add(menu, tr("&Smaller"), "zoom-out", {QKeySequence(tr("Ctrl+-"))},
        [this] { parts.actions.preferences.UseZoom(-1); });
    Add(menu, tr("&Usual Size"), "zoom-original", {QKeySequence(tr("Ctrl+0"))},
        [this] { parts.actions.preferences.UseZoom(0); });
    AddTextSwitches(menu);
    AddSplits(menu);
    FillFolds(menu->addMenu(tr("&Folding")));
    if (parts.actions.symbols != nullptr)
        AddOutline(menu, *parts.actions.symbols);
    if (parts.actions.files != nullptr)
        AddFiles(menu, *parts.actions.files);
}

void EditorMenus::AddFiles(QMenu* menu, FilesActions& files)
{
    QAction* shown = Add(menu, tr("&Files"), "", {QKeySequence(tr("Ctrl+Shift+E"))}, nullptr);
    shown->setCheckable(true);
    connect(shown, &QAction::triggered, this, [&files](bool show) { files.Show(show); });
    connect(&files, &FilesActions::PanelShown, shown, &QAction::setChecked);
}

// The panel is made when it is first shown, and can be closed by its own button.
void EditorMenus::AddOutline(QMenu* menu, SymbolActions& symbols)
{
    menu->addSeparator();
    QAction* outline = Add(menu, tr("&Outline"), "", {QKeySequence(tr("Ctrl+Shift+L"))}, nullptr);
    outline->setCheckable(true);
    connect(outline, &QAction::triggered, this, [&symbols](bool shown) { symbols.Outlines().Show(shown); });
    connect(&symbols.Outlines(), &OutlineActions::Shown, outline, &QAction::setChecked);
}

void EditorMenus::FillWorksheet(QMenu* menu)
{
    Add(menu, tr("&Open Worksheet"), "", {QKeySequence(tr("Ctrl+Shift+W"))},
        [this] { parts.actions.documents.OpenWorksheet(); });
    runLines =
        Add(menu, tr("&Run Lines"), "system-run", {QKeySequence(tr("Ctrl+Return")), QKeySequence(tr("Ctrl+Enter"))},
            [this] { parts.actions.worksheet.RunLines(); });
    stop = Add(menu, tr("&Stop"), "process-stop", {QKeySequence(tr("Ctrl+Shift+Return"))},
               [this] { parts.actions.worksheet.Stop(); });
}

void EditorMenus::FillHelp(QMenu* menu)
{
    if (parts.startTour)
        Add(menu, tr("&Tour"), "", {}, parts.startTour);
    QAction* find =
        Add(menu, tr("Run a &Command\u2026"), "", {QKeySequence(tr("Ctrl+Shift+P"))}, [this] { chooser->Open(); });
    chooser = std::make_unique<CommandChooser>(parts.window, [this, find] {
        std::vector<NamedCommand> all = AllCommands();
        std::erase_if(all, [find](const NamedCommand& each) { return each.action == find; });
        return all;
    });
    Add(menu, tr("About &Symbols"), "", {}, [this] { ShowHelp(); });
    Add(menu, tr("&About Wren"), "help-about", {}, [this] { ShowAbout(); });
}

// What can be chosen now: the menus' own items, and what the plug-in has in *Search*. Menus bring their items up to
// date when they are about to show.
std::vector<NamedCommand> EditorMenus::AllCommands()
{
    for (QMenu* menu : parts.window.menuBar()->findChildren<QMenu*>())
        emit menu->aboutToShow();
    ShowState();
    std::vector<NamedCommand> all;
    const auto add = [&all](const QString& menu, QAction* action) {
        const QString keys = action->shortcut().toString(QKeySequence::NativeText);
        if (action->isEnabled() && !action->isSeparator())
            all.push_back({menu, Plain(action->text().section('\t', 0, 0)),
                           keys.isEmpty() ? action->text().section('\t', 1) : keys, action});
    };
    for (const Item& item : items)
        add(item.menu, item.action);
    for (const char* command : {"GoBack", "GoForward"})
        add(tr("Go"), CommandAction(command));
    for (QAction* action : shownPluginItems)
        add(Plain(search->title()), action);
    return all;
}

void EditorMenus::FillTools()
{
    QToolBar& tools = parts.window.Tools();
    tools.addAction(save);
    tools.addAction(undo);
    tools.addAction(redo);
    tools.addSeparator();
    tools.addAction(CommandAction("GoBack"));
    tools.addAction(CommandAction("GoForward"));
    tools.addSeparator();
    tools.addWidget(&parts.window.Button());
}

void EditorMenus::FillRecent()
{
    recent->clear();
    for (const std::string& path : parts.recentFiles())
        connect(recent->addAction(ShownLabel(path)), &QAction::triggered, this,
                [this, path] { parts.actions.documents.Open(path); });
    if (recent->isEmpty())
        recent->addAction(tr("None"))->setEnabled(false);
}

void EditorMenus::FillPluginItems()
{
    for (QAction* action : std::exchange(shownPluginItems, {}))
        delete action;
    shownPluginItems = MakePluginItems(search);
    search->insertActions(pluginItems, {shownPluginItems.begin(), shownPluginItems.end()});
}

// The plug-in sets the state of its items when it hears that menus are about to show.
std::vector<QAction*> EditorMenus::MakePluginItems(QMenu* menu)
{
    Host& host = parts.host;
    host.Events().MenusShowing();
    const BMenu& items = *host.MenuBar().Search();
    std::vector<QAction*> made;
    for (long index = 0; index < items.CountItems(); ++index) {
        const BMenuItem* item = items.ItemAt(index);
        auto* action = new QAction(ShownLabel(item->Label()), menu);
        action->setSeparator(item->IsSeparator());
        action->setEnabled(item->IsEnabled());
        const std::string command = host.MenuBar().CommandOf(item);
        // The key runs the command by an action of its own; a second one with the same key would make it ambiguous.
        if (const auto bound = commands.find(command); bound != commands.end() && !bound->second->shortcut().isEmpty())
            action->setText(action->text() + '\t' + bound->second->shortcut().toString(QKeySequence::NativeText));
        connect(action, &QAction::triggered, this, [this, command] { parts.router.RunChosen(command); });
        made.push_back(action);
    }
    return made;
}

// What can be done with the name at the caret, and with the text.
void EditorMenus::ShowTextMenu(const QPoint& screen)
{
    ShowState();
    auto* menu = new QMenu(&parts.window);
    menu->setObjectName("textMenu");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(aboutName);
    menu->addSeparator();
    for (QAction* action : MakePluginItems(menu))
        menu->addAction(action);
    menu->addSeparator();
    menu->addActions(aboutText);
    menu->popup(screen);
}

void EditorMenus::Run(const std::string& command)
{
    CodeView* view = parts.window.Tabs().CurrentView();
    if (view != nullptr)
        view->EndTyping();
    if (command == "GoBack")
        parts.actions.places.GoBack();
    else if (command == "GoForward")
        parts.actions.places.GoForward();
    else if (parts.host.Current() != nullptr)
        parts.router.RunBound(command);
    parts.window.Status().Show(parts.host.Current(), parts.window.Tabs().CurrentView());
}

void EditorMenus::ShowHelp()
{
    QMessageBox::information(&parts.window, tr("Symbols"), QString::fromStdString(parts.host.Bundle().Help()));
}

void EditorMenus::ShowAbout()
{
    QMessageBox::about(&parts.window, tr("About Wren"),
                       tr("Wren %1\n\nAn editor that looks up and completes symbols of C, C++ and Objective-C.\n\nThis "
                          "program as a whole is under the GNU General Public License 3, since its text component is; "
                          "Wren's own code is under the MIT licence.")
                           .arg(QApplication::applicationVersion()));
}

void EditorMenus::ShowState()
{
    const Document* document = parts.host.Current();
    const CodeView* view = parts.window.Tabs().CurrentView();
    const bool any = document != nullptr && view != nullptr;
    save->setEnabled(any);
    revert->setEnabled(any && !document->Path().empty());
    const EditorTabs& tabs = parts.window.Tabs();
    closeOthers->setEnabled(tabs.count() > 1);
    closeRight->setEnabled(tabs.currentIndex() + 1 < tabs.count());
    reopen->setEnabled(parts.actions.tabs.CanReopen());
    copyPath->setEnabled(any && !document->Path().empty());
    for (QAction* action : {cut, copy})
        action->setEnabled(any);
    ShowUndo();
    commands["GoBack"]->setEnabled(parts.actions.places.CanGoBack());
    commands["GoForward"]->setEnabled(parts.actions.places.CanGoForward());
    const WorksheetActions& worksheet = parts.actions.worksheet;
    runLines->setEnabled(worksheet.IsWorksheet(document) && !worksheet.IsRunning());
    stop->setEnabled(worksheet.IsRunning());
}

void EditorMenus::ShowUndo()
{
    const CodeView* view = parts.window.Tabs().CurrentView();
    undo->setEnabled(view != nullptr && view->isUndoAvailable());
    redo->setEnabled(view != nullptr && view->isRedoAvailable());
}

QAction* EditorMenus::Add(QMenu* menu, const QString& text, const char* icon, const QList<QKeySequence>& keys,
                          const std::function<void()>& run)
{
    QAction* action = menu->addAction(IconNamed(icon), text);
    action->setShortcuts(keys);
    action->setObjectName(IdFrom(menu->title()) + '.' + IdFrom(text));
    items.push_back({action, Plain(menu->title()), tr("%1: %2").arg(Plain(menu->title()), Plain(text)), keys});
    if (run)
        connect(action, &QAction::triggered, this, run);
    return action;
}

// Each command has one action, in the window itself, so that its keys work whichever menu shows it.
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
    action->setObjectName(QString::fromStdString(command));
    connect(action, &QAction::triggered, this, [this, command] { Run(command); });
    parts.window.addAction(action);
    commands[command] = action;
    return action;
}

} // namespace wren
