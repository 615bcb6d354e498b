#include "wren/desktop/Editor.h"

#include "vetch/display/Display.h"
#include "wren/core/Host.h"
#include "wren/core/HostObservers.h"
#include "wren/core/PluginBundle.h"
#include "wren/desktop/ConfigKeeper.h"
#include "wren/desktop/DesktopFace.h"
#include "wren/desktop/DocumentLabels.h"
#include "wren/desktop/EditorMenus.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/FileKeeper.h"
#include "wren/desktop/GuiLoop.h"
#include "wren/desktop/IcnsIcon.h"
#include "wren/desktop/KeyRouter.h"
#include "wren/desktop/Look.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/NothingFound.h"
#include "wren/desktop/NoticeBar.h"
#include "wren/desktop/PlainBox.h"
#include "wren/desktop/PluginButton.h"
#include "wren/desktop/SessionKeeper.h"
#include "wren/desktop/SettingsKeeper.h"
#include "wren/desktop/StatusLine.h"
#include "wren/desktop/TagsKeeper.h"
#include "wren/desktop/TagsPlaces.h"
#include "wren/desktop/TagsRefresher.h"
#include "wren/desktop/Warnings.h"
#include "wren/desktop/Welcome.h"
#include "wren/desktop/display/QtDisplay.h"
#include "wren/desktop/editor/CodeView.h"

#include <QStatusBar>
#include <QTimer>

namespace wren {

namespace {

constexpr const char* kIcon = "/Contents/Resources/Declaration.icns";
constexpr int kSentenceShown = 8000; // milliseconds, in the status line

std::unique_ptr<PluginBundle> LoadBundle(const std::string& directory, Warnings* warnings)
{
    std::string error;
    std::unique_ptr<PluginBundle> bundle = PluginBundle::Load(directory, &error);
    if (bundle != nullptr)
        return bundle;
    warnings->Tell(Editor::tr("Symbols cannot be looked up or completed: %1. You can still edit texts. Reinstall "
                              "Wren to restore the plug-in.")
                       .arg(QString::fromStdString(error)));
    return PluginBundle::Nothing();
}

} // namespace

// --------------------------------------------------------------------------------------------------- Making and ending

Editor::Editor(const DesktopOptions& options)
    : preferences(options.understandsNames), restoresSession(options.restoresSession),
      hasFolder(!options.folder.empty()), display(std::make_unique<QtDisplay>()),
      loop(std::make_unique<GuiLoop>(*display)), warnings(std::make_unique<Warnings>()),
      bundle(LoadBundle(options.bundle, warnings.get())),
      window(std::make_unique<MainWindow>(ReadIcns(bundle->Directory()->path + kIcon)))
{
    window->Button().setEnabled(!bundle->IsNothing());
    vetch::SetDisplay(display.get());
    display->SetMainWindow(window.get());
    look = LookFor(preferences.Values(), 0);
    MakeHost(options);
    MakeActions(options);
    ConnectTexts();
    ConnectWindow();
    ConnectPlugin(options);
    ConnectNotices();
    preferenceActions->Apply();
}

// The plug-in may warn, ask for the mouse and print while it starts.
void Editor::MakeHost(const DesktopOptions& options)
{
    face = std::make_unique<DesktopFace>(window->Tabs(), *window, window->Button(), look);
    display->SetKeptLine([this] { return face->AskedLine(); });
    face->onWarn = [this](const std::string& text) { warnings->Tell(QString::fromStdString(text)); };
    if (options.guardsTags)
        tags = std::make_unique<TagsKeeper>(window->Notices(), window->Status());
    std::vector<HostObserver*> observing = {face.get()};
    if (options.observer != nullptr)
        observing.push_back(options.observer);
    observers = std::make_unique<HostObservers>(observing);
    host = std::make_unique<Host>(*bundle, *face, *observers, options.settingsFile);
    host->SetOwnSettings(&preferences);
    host->SetFirstSettings(options.firstSettings);
    host->SetWorksheetDirectory(AbsolutePath("."));
    router = std::make_unique<KeyRouter>(*host, *display, *loop);
    face->router = router.get();
    host->Start();
}

void Editor::MakeActions(const DesktopOptions& options)
{
    tagsPlaces = std::make_unique<TagsPlaces>(*host, window->Notices(), window->Status());
    files = std::make_unique<FileKeeper>(*host, window->Tabs(), window->Notices(), *window);
    worksheet = std::make_unique<WorksheetActions>(*host, window->Tabs());
    settings = std::make_unique<SettingsKeeper>(*host);
    labels = std::make_unique<DocumentLabels>(*host, *window);
    documents = std::make_unique<DocumentActions>(
        DocumentActions::Parts{*host, *window, *loop, *files, *worksheet, *labels, *router});
    configs = std::make_unique<ConfigKeeper>(
        ConfigKeeper::Parts{*host, window->Tabs(), *documents, [this] { return preferences.Values().followsConfig; },
                            [this](const QString& text) { window->Notices().Tell(text); }});
    files->configured = [this](const std::string& path) { return configs->EncodingFor(path); };
    tabActions = std::make_unique<TabActions>(*host, window->Tabs(), *documents);
    texts = std::make_unique<TextChooser>(*host, *window);
    places = std::make_unique<PlaceActions>(*host, window->Tabs(), *documents);
    preferenceActions = std::make_unique<PreferenceActions>(
        PreferenceActions::Parts{preferences, look, *host, *window, *display, *loop, *router, *settings});
    session = std::make_unique<SessionKeeper>(
        SessionKeeper::Parts{*host, *window, window->Tabs(), window->Notices(), *files, *documents, options.folder});
    if (options.understandsNames)
        symbols = std::make_unique<SymbolActions>(SymbolActions::Parts{*host, *window, *documents, *places,
                                                                       [this] { return RecentFiles(); },
                                                                       [this] { return router->controlClicks; }},
                                                  SymbolEngineOptions{options.indexes, options.indexesSystem});
    if (symbols != nullptr)
        finder = std::make_unique<FinderActions>(*host, *window, *symbols);
    if (symbols != nullptr)
        filesActions = std::make_unique<FilesActions>(
            FilesActions::Parts{*host, *window, *places, symbols->Engine(), options.folder});
    if (symbols != nullptr && !options.program.empty())
        refresher = std::make_unique<TagsRefresher>(TagsRefresher::Parts{
            options.program, options.settingsFile, [this] { return preferences.Values().keepsTags; },
            [this](const std::string& file) { return tags != nullptr && tags->IsMaking(file); }});
    const std::function<void()> startTour = [this] { welcome->StartTour(); };
    menus = std::make_unique<EditorMenus>(EditorMenus::Parts{*window, *host, *router, Actions(),
                                                             [this] { return RecentFiles(); },
                                                             symbols == nullptr ? nullptr : startTour});
    welcome = std::make_unique<Welcome>(Welcome::Parts{*host, *window, *documents, [this] { return RecentFiles(); },
                                                       [this](const QString& item) { return menus->KeysOf(item); },
                                                       [this] { preferenceActions->Open(); }, symbols != nullptr});
}

// The plug-in's windows end before the display that shows them, and that before Qt's own.
Editor::~Editor()
{
    window->disconnect(this);
    window->Tabs().disconnect(this);
    refresher.reset();
    tags.reset(); // what runs is stopped while there is a host to work for
    host->ShutDown();
    loop->LetThrough();
    welcome.reset();
    menus.reset();
    filesActions.reset();
    symbols.reset();
    session.reset();
    preferenceActions.reset();
    places.reset();
    texts.reset();
    tabActions.reset();
    documents.reset();
    labels.reset();
    settings.reset();
    worksheet.reset();
    files.reset();
    tagsPlaces.reset();
    router.reset();
    host.reset();
    warnings.reset();
    loop.reset();
    window.reset();
    vetch::SetDisplay(nullptr);
}

// --------------------------------------------------------------------------------------------------------- Connections

// Texts, their tabs and their files.
void Editor::ConnectTexts()
{
    if (symbols != nullptr)
        ConnectCompletion();
    router->onCaret = [this] {
        labels->ShowCaret();
        if (symbols != nullptr)
            symbols->CaretMoved();
    };
    router->onModified = [this](CodeView& view, bool modified) {
        documents->ModifiedSet(window->Tabs().DocumentOf(&view), modified);
    };
    router->onChanged = [this](CodeView& view) {
        session->TextChanged(window->Tabs().DocumentOf(&view));
        if (symbols != nullptr)
            symbols->TextChanged(window->Tabs().DocumentOf(&view));
        menus->ShowUndo();
        welcome->Update();
    };
    router->onMoves = [this](CodeView& view, long offset, long removed, long inserted) {
        const long id = window->Tabs().DocumentOf(&view);
        places->TextMoves(id, offset, removed, inserted);
        worksheet->TextMoves(id, offset, removed, inserted);
    };
    connect(&window->Tabs(), &EditorTabs::Raised, this, [this](long id) {
        documents->Raised(id);
        tagsPlaces->Show();
        if (symbols != nullptr)
            symbols->Raised();
        if (filesActions != nullptr)
            filesActions->Follow();
        if (welcome != nullptr)
            welcome->Update();
    });
    connect(&window->Tabs(), &EditorTabs::CloseAsked, this, [this](long id) { documents->Close(id); });
    connect(files.get(), &FileKeeper::Saved, documents.get(), &DocumentActions::Saved);
    if (filesActions != nullptr)
        connect(files.get(), &FileKeeper::Saved, filesActions.get(), &FilesActions::Refresh);
    if (refresher != nullptr) {
        connect(files.get(), &FileKeeper::Saved, this, [this](long id) { RefreshTagsOf(id); });
        connect(files.get(), &FileKeeper::ReadAgain, this, [this](long id) { RefreshTagsOf(id); });
        connect(refresher.get(), &TagsRefresher::Made, this, [this] { tagsPlaces->Show(); });
    }
    connect(files.get(), &FileKeeper::ReadAgain, menus.get(), &EditorMenus::ShowUndo);
    connect(files.get(), &FileKeeper::ReadAgain, this, [this] { labels->ShowCaret(); });
    connect(documents.get(), &DocumentActions::Named, welcome.get(), [this] {
        tagsPlaces->Show();
        welcome->Update();
    });
    connect(places.get(), &PlaceActions::Went, documents.get(), &DocumentActions::Changed);
}

void Editor::ConnectCompletion()
{
    symbols->Completion().pluginOffers = [this] { return display->IsPopUpVisible(); };
    symbols->Completion().pluginLists = [this] {
        return display->IsPopUpVisible() || display->FrontList().window != 0;
    };
    symbols->Completion().pluginLeaves = [this] {
        display->DismissPopUps();
        loop->LetThrough();
    };
    symbols->Completion().pluginCompletes = [this] { router->RunPlugins("SymbolCompletion"); };
    router->onKey = [this](CodeView& view, const QKeyEvent& event) {
        return symbols != nullptr && symbols->Completion().KeyPressed(view, event);
    };
    router->onTyped = [this](CodeView& view) { return symbols != nullptr && symbols->Completion().Typed(view); };
    router->onCompletion = [this] { return symbols != nullptr && symbols->Completion().Asked(); };
}

bool Editor::KeepsTagsBusy() const
{
    return refresher != nullptr && refresher->IsBusy();
}

void Editor::RefreshTagsOf(long document)
{
    const Document* saved = host->AllDocuments().Find(document);
    if (saved != nullptr && !saved->IsWorksheet())
        refresher->FileChanged(saved->Path());
}

// The window, its menus and the keys that choose from them.
void Editor::ConnectWindow()
{
    connect(window.get(), &MainWindow::UserCame, this, [this] {
        host->UserCame();
        tagsPlaces->Show(); // other programs make tags, too
        files->Check();
        if (filesActions != nullptr)
            filesActions->Refresh();
    });
    connect(window.get(), &MainWindow::UserLeft, this, [this] { host->UserLeft(); });
    connect(window.get(), &MainWindow::FrameChanged, this, [this] { host->AllDocuments().FollowFrame(); });
    connect(window.get(), &MainWindow::ColoursChanged, this, [this] { preferenceActions->FollowColours(); });
    connect(window.get(), &MainWindow::FilesDropped, this, [this](const QStringList& paths) {
        for (const QString& path : paths)
            documents->Open(path.toStdString());
    });
    window->mayClose = [this] { return Quit(); };
    connect(documents.get(), &DocumentActions::ZoomAsked, preferenceActions.get(), &PreferenceActions::UseZoom);
    connect(preferenceActions.get(), &PreferenceActions::KeysChosen, menus.get(),
            [this] { menus->BindKeys(preferences.Values().keys, preferences.Values().menuKeys); });
    connect(preferenceActions.get(), &PreferenceActions::KeysChosen, configs.get(), &ConfigKeeper::FollowAll);
    if (symbols != nullptr)
        connect(preferenceActions.get(), &PreferenceActions::KeysChosen, symbols.get(), [this] {
            symbols->Outlines().ShowScopes(preferences.Values().showsScopes);
            symbols->Completion().Use(preferences.Values().completion);
        });
    preferenceActions->menuItems = [this] { return menus->OwnItems(); };
}

// The plug-in's button, and what a lookup opens.
void Editor::ConnectPlugin(const DesktopOptions& options)
{
    connect(&window->Button(), &PluginButton::Clicked, this,
            [this](Qt::KeyboardModifiers held) { router->ButtonClicked(held); });
    connect(&window->Button(), &PluginButton::PopUpAsked, this, [this] { router->ButtonPopUp(); });
    display->SetOnBeep([this] {
        window->statusBar()->showMessage(NothingFound(*host, *router, *display).Sentence(), kSentenceShown);
    });
    face->keysWait = options.keysWait;
    face->onOpenMatch = options.openMatch;
    if (!face->onOpenMatch)
        face->onOpenMatch = [this](const std::string& path, long line) {
            symbols != nullptr ? symbols->TheLanding().GoToMatch(path, line) : places->OpenMatch(path, line);
        };
    if (options.raisesWorksheet) // when the plug-in call is over that appends to it
        face->onWorksheetGrown = [this] { QTimer::singleShot(0, documents.get(), &DocumentActions::OpenWorksheet); };
}

// Notices, the status line, and news of other threads, which wake the loop.
void Editor::ConnectNotices()
{
    connect(loop.get(), &GuiLoop::Woke, this, [this] { window->Status().ShowBackground(); });
    connect(loop.get(), &GuiLoop::Woke, session.get(), &SessionKeeper::TakeNews);
    if (tags != nullptr) {
        connect(loop.get(), &GuiLoop::Woke, tags.get(), &TagsKeeper::TakeNews);
        connect(tags.get(), &TagsKeeper::Told, this,
                [this](const QString& text) { window->statusBar()->showMessage(text, kSentenceShown); });
        connect(tags.get(), &TagsKeeper::RunEnded, this, [this] { tagsPlaces->Show(); });
        display->SetOnAnswer(
            [this](const vetch::AlertDescription& alert, long answer) { return tagsPlaces->Answer(alert, answer); });
    }
    if (symbols != nullptr)
        connect(loop.get(), &GuiLoop::Woke, symbols.get(), &SymbolActions::TakeNews);
    connect(loop.get(), &GuiLoop::Woke, this, [this] { warnings->TakeNews(); });
    connect(loop.get(), &GuiLoop::Woke, this, &Editor::Woke);
    const auto warn = [this](const QString& reason) { warnings->Tell(reason); };
    connect(settings.get(), &SettingsKeeper::Failed, this, warn);
    connect(preferenceActions.get(), &PreferenceActions::Failed, this, warn);
    connect(documents.get(), &DocumentActions::Warned, this, warn);
    connect(worksheet.get(), &WorksheetActions::Told, this,
            [this](const QString& text) { window->statusBar()->showMessage(text, kSentenceShown); });
    connect(&window->Notices(), &NoticeBar::AllAsked, this,
            [this] { documents->NewWithText((window->Notices().Told() + '\n').toStdString()); });
}

// ------------------------------------------------------------------------------------------------------- Start and end

void Editor::Show(const std::vector<Place>& wanted)
{
    window->restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(session->State().geometry)));
    RestorePanels();
    window->show();
    window->activateWindow(); // where no window manager does it
    warnings->ShowIn(window->Notices());
    for (const Place& place : wanted)
        documents->OpenOrNew(place);
    if (restoresSession && preferences.Values().restoresSession && wanted.empty())
        session->Restore();
    session->OfferRecovery();
    if (host->Current() == nullptr)
        documents->New();
    host->AllDocuments().FollowFrame();
    window->Tabs().FocusCurrent();
    welcome->Update();
}

// The panel of matches is shown when there are matches.
void Editor::RestorePanels()
{
    window->restoreState(QByteArray::fromBase64(QByteArray::fromStdString(session->State().layout)));
    for (const std::string& panel : session->State().panels) {
        if (panel == "outline" && symbols != nullptr)
            symbols->Outlines().Show(true);
        if (panel == "files" && filesActions != nullptr)
            filesActions->Show(true);
    }
    if (session->State().layout.empty() && hasFolder && filesActions != nullptr)
        filesActions->Show(true);
}

bool Editor::Quit()
{
    for (Document* document : host->AllDocuments().All())
        if (!files->MayGo(*document))
            return false;
    if (!worksheet->MayStop(window.get()) || (tags != nullptr && !tags->MayStop(window.get())))
        return false;
    session->Save();
    std::string error;
    if (!settings->Store(&error))
        AskPlainly(QMessageBox::Warning, window.get(), QString::fromStdString(error));
    for (const Document* document : host->AllDocuments().All())
        session->Settled(document->Id());
    return true;
}

void Editor::PrepareToEnd(int signal)
{
    session->Save();
    session->KeepUnsaved();
    settings->StoreAtEnd();
    if (tags != nullptr)
        tags->StopAtEnd(signal);
}

void Editor::LetThrough()
{
    loop->LetThrough();
}

const std::vector<std::string>& Editor::RecentFiles() const
{
    return session->State().recentFiles;
}

bool Editor::HasUnkeptTexts() const
{
    return session->IsUnsafe();
}

} // namespace wren
