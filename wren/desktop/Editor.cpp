#include "wren/desktop/Editor.h"

#include "vetch/app/Loop.h"
#include "vetch/display/Display.h"
#include "wren/core/Host.h"
#include "wren/core/PluginBundle.h"
#include "wren/core/UserDirectories.h"
#include "wren/core/Witnesses.h"
#include "wren/desktop/Complaints.h"
#include "wren/desktop/DesktopFace.h"
#include "wren/desktop/EditorMenus.h"
#include "wren/desktop/EditorTabs.h"
#include "wren/desktop/FileKeeper.h"
#include "wren/desktop/GuiLoop.h"
#include "wren/desktop/IcnsIcon.h"
#include "wren/desktop/KeyRouter.h"
#include "wren/desktop/Look.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/NoticeBar.h"
#include "wren/desktop/PlainBox.h"
#include "wren/desktop/PluginButton.h"
#include "wren/desktop/PreferencesDialog.h"
#include "wren/desktop/SessionKeeper.h"
#include "wren/desktop/SettingsKeeper.h"
#include "wren/desktop/StatusLine.h"
#include "wren/desktop/TagsKeeper.h"
#include "wren/desktop/WorksheetActions.h"
#include "wren/desktop/display/QtDisplay.h"
#include "wren/desktop/editor/CodeView.h"
#include "wren/desktop/editor/FindBar.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QStatusBar>
#include <QTimer>

#include <algorithm>
#include <filesystem>

namespace wren {

namespace {

namespace fs = std::filesystem;

constexpr const char* kIcon = "/Contents/Resources/Declaration.icns";
constexpr int kMostZoom = 20; // points more or less

std::unique_ptr<PluginBundle> LoadBundle(const std::string& directory, QStringList* problems)
{
    std::string error;
    std::unique_ptr<PluginBundle> bundle = PluginBundle::Load(directory, &error);
    if (bundle != nullptr)
        return bundle;
    problems->append(Editor::tr("Symbols cannot be looked up or completed: %1. Texts can be edited all the same; "
                                "installing Wren anew brings the plug-in back.")
                         .arg(QString::fromStdString(error)));
    return PluginBundle::Nothing();
}

// Byte by byte: names of files need not be UTF-8.
std::string AbsolutePath(const std::string& path)
{
    std::error_code gone; // the directory in which it was started: then the path stays relative
    const fs::path absolute = (fs::current_path(gone) / path).lexically_normal();
    return absolute.has_filename() ? absolute : absolute.parent_path();
}

} // namespace

Editor::Editor(const DesktopOptions& options)
    : restoresSession(options.restoresSession), display(std::make_unique<QtDisplay>()),
      loop(std::make_unique<GuiLoop>(*display)),
      complaints(std::make_unique<Complaints>([this](const std::string& text) { Warn(text); })),
      bundle(LoadBundle(options.bundle, &problems)),
      window(std::make_unique<MainWindow>(ReadIcns(bundle->Directory()->path + kIcon)))
{
    window->Button().setEnabled(!bundle->IsNothing());
    vetch::SetDisplay(display.get());
    display->SetMainWindow(window.get());
    look = LookFor(preferences.Values(), zoom);
    face = std::make_unique<DesktopFace>(window->Tabs(), *window, window->Button(), look);
    face->onWarn = [this](const std::string& text) { Warn(text); };
    if (options.guardsTags)
        tags = std::make_unique<TagsKeeper>(window->Notices(), window->Status());
    MakeHost(options);
    session = std::make_unique<SessionKeeper>(*this);
    menus = std::make_unique<EditorMenus>(*this);
    Connect();
    ApplyPreferences();
}

// The plug-in's windows end before the display that shows them, and that before Qt's own.
Editor::~Editor()
{
    quitting = true;
    window->disconnect(this);
    window->Tabs().disconnect(this);
    tags.reset(); // what runs is stopped while there is a host to work for
    host->ShutDown();
    loop->LetThrough();
    menus.reset();
    worksheet.reset();
    files.reset();
    session.reset();
    settings.reset();
    router.reset();
    host.reset();
    complaints.reset();
    loop.reset();
    window.reset();
    vetch::SetDisplay(nullptr);
}

void Editor::MakeHost(const DesktopOptions& options)
{
    std::vector<HostWitness*> hearing = {face.get()};
    if (options.witness != nullptr)
        hearing.push_back(options.witness);
    witnesses = std::make_unique<Witnesses>(hearing);
    host = std::make_unique<Host>(*bundle, *face, *witnesses, options.settingsFile);
    host->SetOwnSettings(&preferences);
    host->SetWorksheetDirectory(AbsolutePath("."));
    router = std::make_unique<KeyRouter>(*host, *display, *loop);
    face->router = router.get();
    files = std::make_unique<FileKeeper>(*host, window->Tabs(), window->Notices(), *window);
    worksheet = std::make_unique<WorksheetActions>(*host, window->Tabs());
    host->Start();
    settings = std::make_unique<SettingsKeeper>(*host);
}

void Editor::Connect()
{
    face->onOpenMatch = [this](const std::string& path, long line) { OpenMatch(path, line); };
    // It is raised when the plug-in call that adds to it is over.
    face->onWorksheetGrown = [this] { QTimer::singleShot(0, this, &Editor::OpenWorksheet); };
    router->onCaret = [this] { ShowState(); };
    router->onModified = [this](CodeView& view, bool modified) {
        const long id = window->Tabs().DocumentOf(&view);
        if (const Document* document = host->AllDocuments().Find(id))
            ShowName(*document, modified);
        if (!modified)
            session->Settled(id);
        emit DocumentsChanged();
    };
    router->onChanged = [this](CodeView& view) {
        session->TextChanged(window->Tabs().DocumentOf(&view));
        emit TextEdited();
    };
    router->onMoves = [this](CodeView& view, long offset, long removed, long inserted) {
        const long id = window->Tabs().DocumentOf(&view);
        places.TextChanged(id, offset, removed, inserted);
        worksheet->TextMoves(id, offset, removed, inserted);
    };
    connect(loop.get(), &GuiLoop::Woke, this, [this] { window->Status().ShowBackground(); });
    connect(loop.get(), &GuiLoop::Woke, session.get(), &SessionKeeper::TakeNews);
    if (tags != nullptr)
        connect(loop.get(), &GuiLoop::Woke, tags.get(), &TagsKeeper::TakeNews);
    connect(loop.get(), &GuiLoop::Woke, this, [this] { complaints->Take(); });
    connect(&window->Tabs(), &EditorTabs::Raised, this, &Editor::Raised);
    connect(&window->Tabs(), &EditorTabs::CloseAsked, this, &Editor::Close);
    connect(window.get(), &MainWindow::UserCame, this, [this] {
        host->UserCame();
        files->Check();
    });
    connect(window.get(), &MainWindow::UserLeft, this, [this] { host->UserLeft(); });
    connect(window.get(), &MainWindow::FrameChanged, this, [this] { host->AllDocuments().FollowFrame(); });
    connect(window.get(), &MainWindow::ColoursChanged, this, &Editor::FollowColours);
    connect(window.get(), &MainWindow::FilesDropped, this, [this](const QStringList& paths) {
        for (const QString& path : paths)
            Open(path.toStdString());
    });
    connect(&window->Button(), &PluginButton::Clicked, this,
            [this](Qt::KeyboardModifiers held) { router->ButtonClicked(held); });
    connect(&window->Button(), &PluginButton::PopUpAsked, this, [this] {
        host->Events().ButtonPopUp();
        loop->LetThrough();
    });
    connect(files.get(), &FileKeeper::Saved, this, [this](long id) {
        const Document* document = host->AllDocuments().Find(id);
        ShowName(*document, false);
        places.DocumentNamed(id, document->Path());
        session->Settled(id);
        if (!document->IsWorksheet())
            session->Opened(document->Path());
        window->statusBar()->showMessage(tr("Saved %1").arg(QString::fromStdString(document->Path())), 4000);
        emit DocumentsChanged();
    });
    connect(files.get(), &FileKeeper::ReadAgain, this, &Editor::TextEdited);
    connect(settings.get(), &SettingsKeeper::Failed, this,
            [this](const QString& reason) { Warn(reason.toStdString()); });
    connect(worksheet.get(), &WorksheetActions::Told, this,
            [this](const QString& text) { window->statusBar()->showMessage(text, 8000); });
    connect(&window->Notices(), &NoticeBar::AllAsked, this, &Editor::ShowNotices);
    window->mayClose = [this] { return Quit(); };
}

void Editor::Show(const std::vector<Place>& wanted)
{
    window->restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(session->State().geometry)));
    window->show();
    window->activateWindow(); // where no window manager does it
    window->Notices().TellAll(std::exchange(problems, {}));
    for (const Place& place : wanted)
        OpenOrNew(place);
    if (restoresSession && preferences.Values().restoresSession && wanted.empty())
        session->Restore();
    session->OfferRecovery();
    if (host->Current() == nullptr)
        New();
    host->AllDocuments().FollowFrame();
    CurrentView()->setFocus();
}

Document* Editor::Load(const std::string& absolute, const std::optional<std::string>& text)
{
    std::string error;
    Document* document = Adopt(host->Open(absolute, text, false, &error));
    if (document == nullptr)
        AskPlainly(QMessageBox::Critical, window.get(), QString::fromStdString(error));
    return document;
}

bool Editor::Open(const std::string& path, long line, long column)
{
    const std::string absolute = AbsolutePath(path);
    Document* document = host->AllDocuments().FindByPath(absolute);
    if (document == nullptr) {
        Document* untouched = host->Current();
        const bool replaces = untouched != nullptr && untouched->Path().empty() && untouched->Length() == 0 &&
                              !files->IsModified(*untouched);
        document = Load(absolute, std::nullopt);
        if (document == nullptr)
            return false;
        if (replaces)
            Close(untouched->Id());
    }
    window->Tabs().Raise(document->Id());
    session->Opened(absolute);
    if (line > 0) {
        CodeView* view = CurrentView();
        view->GoToLine(line);
        if (column > 1)
            view->GoTo(std::min(view->Caret() + column - 1, document->LineEnd(line - 1)));
    }
    emit DocumentsChanged();
    return true;
}

void Editor::OpenOrNew(const Place& place)
{
    const std::string absolute = AbsolutePath(place.file);
    std::error_code unknown;
    // A link to nowhere is not there either, but its name is taken.
    if (fs::symlink_status(absolute, unknown).type() == fs::file_type::not_found &&
        fs::is_directory(fs::path(absolute).parent_path(), unknown))
        OpenNew(absolute);
    else
        Open(place.file, place.line, place.column);
}

void Editor::OpenNew(const std::string& absolute)
{
    Document* document = host->AllDocuments().FindByPath(absolute);
    if (document == nullptr)
        document = Load(absolute, "");
    if (document == nullptr)
        return;
    window->Tabs().Raise(document->Id());
    window->statusBar()->showMessage(tr("%1 is a new file: saving makes it").arg(QString::fromStdString(absolute)),
                                     8000);
    emit DocumentsChanged();
}

bool Editor::OpenUnsaved(const std::string& path, const std::string& text)
{
    Document* document = path.empty() ? Adopt(&host->New()) : host->AllDocuments().FindByPath(path);
    if (document == nullptr) {
        std::string error;
        std::error_code unknown;
        const bool worksheet = path == WorksheetActions::File();
        Document* opened = fs::exists(path, unknown) ? host->Open(path, std::nullopt, worksheet, &error) : nullptr;
        document = Adopt(opened != nullptr ? opened : host->Open(path, "", worksheet, &error));
    }
    if (document == nullptr)
        return false;
    window->Tabs().Raise(document->Id());
    // As an edit of what the file holds now, so that it counts as not saved and can be taken back.
    document->BeginUndo({}, "Recover");
    document->Delete(0, document->Length());
    document->Insert(0, text);
    document->CloseUndo();
    ShowName(*document, true);
    return true;
}

void Editor::New()
{
    window->Tabs().Raise(Adopt(&host->New())->Id());
    emit DocumentsChanged();
}

bool Editor::Close(long id)
{
    Document* document = host->AllDocuments().Find(id);
    if (document == nullptr || !files->MayGo(*document) || (document->IsWorksheet() && !MayStopCommand()))
        return false;
    const bool wasCurrent = host->Current() == document;
    files->Closed(id);
    session->Settled(id);
    places.DocumentClosed(id);
    host->Close(*document);
    window->Tabs().Remove(id);
    ShowTitle(); // which may have been told from that one
    if (wasCurrent && !quitting && host->Current() == nullptr && window->Tabs().count() == 0)
        New();
    emit DocumentsChanged();
    return true;
}

bool Editor::Quit()
{
    for (Document* document : host->AllDocuments().All())
        if (!files->MayGo(*document))
            return false;
    if (!MayStopCommand() || !MayStopTags())
        return false;
    quitting = true;
    session->Save();
    std::string error;
    if (!settings->Store(&error))
        AskPlainly(QMessageBox::Warning, window.get(), QString::fromStdString(error));
    for (Document* document : host->AllDocuments().All())
        session->Settled(document->Id());
    return true;
}

// Its output would have no place.
bool Editor::MayStopCommand()
{
    if (!worksheet->IsRunning())
        return true;
    const bool stops =
        AskPlainly(QMessageBox::Question, window.get(), tr("A command of the Worksheet is still running. Stop it?"),
                   QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
    if (stops)
        worksheet->Stop();
    return stops;
}

// Nobody would be told what came of them.
bool Editor::MayStopTags()
{
    return tags == nullptr || tags->MayStop(window.get());
}

void Editor::StopAtEnd(int signal)
{
    if (tags != nullptr)
        tags->StopAtEnd(signal);
}

void Editor::OpenAsked()
{
    const Document* current = Current();
    const std::string directory = current == nullptr ? "" : DirectoryOf(*current);
    for (const QString& path :
         QFileDialog::getOpenFileNames(window.get(), tr("Open"), QString::fromStdString(directory)))
        Open(path.toStdString());
}

void Editor::Save()
{
    if (Document* document = Current())
        files->Save(*document);
}

void Editor::SaveAs()
{
    if (Document* document = Current())
        files->SaveAs(*document);
}

void Editor::SaveAll()
{
    for (Document* document : host->AllDocuments().All())
        if (files->IsModified(*document) && !files->Save(*document))
            return;
}

void Editor::Revert()
{
    if (Document* document = Current())
        files->Revert(*document);
}

void Editor::CloseCurrent()
{
    if (const Document* document = Current())
        Close(document->Id());
}

// As what a new document holds: nobody is asked to save it.
void Editor::ShowNotices()
{
    New();
    CurrentView()->SetBytes((window->Notices().Told() + '\n').toStdString());
}

void Editor::GoBack()
{
    GoTo(places.Back(Here()));
}

void Editor::GoForward()
{
    GoTo(places.Forward(Here()));
}

void Editor::GoToLine()
{
    const Document* document = Current();
    if (document == nullptr)
        return;
    const int last = static_cast<int>(document->LineAt(document->Length())) + 1;
    const int now = static_cast<int>(document->LineAt(CurrentView()->Caret())) + 1;
    bool chosen = false;
    const int line =
        QInputDialog::getInt(window.get(), tr("Go to Line"), tr("Line, 1 to %1:").arg(last), now, 1, last, 1, &chosen);
    if (!chosen)
        return;
    places.Left(Here());
    CurrentView()->GoToLine(line);
    CurrentView()->setFocus();
    emit DocumentsChanged();
}

void Editor::Run(const std::string& command)
{
    if (CodeView* view = CurrentView())
        view->EndTyping();
    if (command == "GoBack")
        GoBack();
    else if (command == "GoForward")
        GoForward();
    else if (Current() != nullptr)
        router->RunBound(command);
    ShowState();
}

void Editor::OpenWorksheet()
{
    Document* document = host->AllDocuments().FindWorksheet();
    if (document == nullptr) {
        std::string error;
        const std::string file = WorksheetActions::File();
        std::error_code unknown;
        const bool kept = !file.empty() && fs::exists(file, unknown);
        document = Adopt(host->Open(file, kept ? std::nullopt : std::optional<std::string>(""), true, &error));
        if (document == nullptr)
            return Warn(error);
    }
    window->Tabs().Raise(document->Id());
    CurrentView()->GoTo(document->Length());
    emit DocumentsChanged();
}

void Editor::OpenPreferences()
{
    PreferencesDialog dialog(*host, *display, *loop, preferences.Values(), window.get());
    dialog.SetMenuKeys(menus->OwnKeys());
    connect(&dialog, &PreferencesDialog::Changed, this, [this](const PreferenceValues& values) {
        preferences.Set(values);
        ApplyPreferences();
        settings->Changed();
    });
    connect(loop.get(), &GuiLoop::Woke, &dialog,
            [this] { settings->Changed(); }); // what a panel sets comes as a message
    dialog.exec();
    std::string error;
    if (!settings->Store(&error))
        Warn(error);
}

void Editor::UseZoom(int steps)
{
    zoom = steps == 0 ? 0 : std::clamp(zoom + steps, -kMostZoom, kMostZoom);
    ApplyPreferences();
}

void Editor::AboutSymbols()
{
    QMessageBox::information(window.get(), tr("Symbols"), QString::fromStdString(bundle->Help()));
}

void Editor::About()
{
    QMessageBox::about(window.get(), tr("About Wren"),
                       tr("Wren %1\n\nAn editor that looks up and completes symbols of C, C++ and Objective-C.\n\nThis "
                          "program as a whole is under the GNU General Public License 3, since its text component is; "
                          "Wren's own code is under the MIT licence.")
                           .arg(QApplication::applicationVersion()));
}

Document* Editor::Current()
{
    return host->Current();
}

CodeView* Editor::CurrentView()
{
    return window->Tabs().CurrentView();
}

void Editor::ApplyPreferences()
{
    const PreferenceValues& values = preferences.Values();
    ApplyColours(values.colours);
    look = LookFor(values, zoom);
    window->Tabs().SetLook(look);
    router->keys = KeysFor(values);
    router->controlClicks = values.lookupClick == PreferenceValues::LookupClick::Control;
    display->SetModifierKeys(router->keys);
    BindKeys();
}

// The desktop may turn dark in the evening, while texts are open.
void Editor::FollowColours()
{
    const EditorLook now = LookFor(preferences.Values(), zoom);
    if (now.dark == look.dark)
        return;
    look = now;
    window->Tabs().SetLook(look);
}

// A command is known to the plug-in by the first of its keys that can be told: it shows it, and it is what chooses from
// the list of completions. The other keys of the command do what that one does.
void Editor::BindKeys()
{
    for (const CommandTable::Command& command : host->Commands().Registered())
        host->Commands().Bind(command.name, {});
    for (const auto& [command, key] : preferences.Values().keys)
        if (host->Commands().BindingOf(command).key == 0)
            if (const std::optional<KeyBinding> binding = BindingFrom(key, router->keys))
                host->Commands().Bind(command, *binding);
    menus->BindKeys(preferences.Values().keys);
}

void Editor::OpenMatch(const std::string& path, long line)
{
    const VisitedPlace left = Here();
    if (!Open(path, line))
        return;
    places.Left(left);
    emit DocumentsChanged();
}

VisitedPlace Editor::Here()
{
    const Document* document = Current();
    return document == nullptr ? VisitedPlace()
                               : VisitedPlace{document->Id(), document->Path(), CurrentView()->Caret()};
}

void Editor::GoTo(const std::optional<VisitedPlace>& place)
{
    if (!place)
        return beep();
    const Document* document = host->AllDocuments().Find(place->document);
    if (document != nullptr)
        window->Tabs().Raise(document->Id());
    else if (place->path.empty() || !Open(place->path))
        return;
    CurrentView()->GoTo(std::min(place->offset, Current()->Length()));
    emit DocumentsChanged();
}

void Editor::Raised(long id)
{
    Document* document = host->AllDocuments().Find(id);
    if (document == nullptr)
        return;
    host->MakeCurrent(*document);
    window->Find().SetView(CurrentView());
    loop->LetThrough();
    ShowTitle();
    ShowState();
    emit DocumentsChanged();
}

// The Worksheet is kept without a question, so that nobody needs to know whether it was.
void Editor::ShowName(const Document& document, bool modified)
{
    if (document.IsWorksheet())
        window->Tabs().SetWorksheetName(document.Id());
    else
        window->Tabs().SetName(document.Id(), document.Path(), modified);
    ShowTitle();
}

void Editor::ShowState()
{
    const Document* document = Current();
    window->Status().Show(document, CurrentView());
}

void Editor::ShowTitle()
{
    const Document* document = Current();
    const QString path = document == nullptr ? "" : QString::fromStdString(document->Path());
    QString name = document == nullptr ? "" : window->Tabs().NameOf(document->Id());
    if (name.isEmpty())
        name = QFileInfo(path).fileName();
    name.replace("[*]", "[*][*]"); // Qt would take it for the place of its mark of unsaved changes
    window->setWindowFilePath(path);
    window->setWindowTitle(name.isEmpty() ? tr("Wren") : tr("%1 - Wren").arg(name));
}

Document* Editor::Adopt(Document* document)
{
    if (document == nullptr)
        return nullptr;
    CodeView* view = window->Tabs().ViewOf(document->Id());
    view->SetClient(router.get());
    connect(view, &CodeView::ZoomAsked, this, &Editor::UseZoom, Qt::UniqueConnection);
    view->SetLanguageFor(document->Path());
    ShowName(*document, false);
    if (!document->Path().empty())
        places.DocumentNamed(document->Id(), document->Path());
    files->Opened(*document);
    return document;
}

void Editor::Warn(const std::string& text)
{
    if (window->isVisible())
        window->Notices().Tell(QString::fromStdString(text));
    else
        problems.append(QString::fromStdString(text));
}

} // namespace wren
