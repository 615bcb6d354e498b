// The editor that a person sits at: its documents, the plug-in, and the window around them.
#pragma once

#include "wren/core/Place.h"
#include "wren/core/PlaceStack.h"
#include "wren/core/Preferences.h"
#include "wren/desktop/editor/EditorLook.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace wren {

class CodeView;
class Complaints;
class DesktopFace;
class Document;
class FileKeeper;
class GuiLoop;
class Host;
class HostWitness;
class KeyRouter;
class MainWindow;
class PluginBundle;
class QtDisplay;
class SessionKeeper;
class SettingsKeeper;
class TagsKeeper;
class Witnesses;
class WorksheetActions;
class EditorMenus;
class PreferencesDialog;

struct DesktopOptions {
    std::string bundle;             // a directory
    std::string settingsFile;       // "" keeps settings nowhere
    bool restoresSession = true;    // where the preferences do not say otherwise
    bool guardsTags = true;         // false hands command lines to a shell as the plug-in wrote them
    HostWitness* witness = nullptr; // hears what the plug-in does to the editor; borrowed, null for nobody
};

// Everything is made with it and goes with it, in the order that the framework wants. One at a time; GUI thread.
class Editor : public QObject {
    Q_OBJECT
public:
    explicit Editor(const DesktopOptions& options);
    ~Editor() override;

    // The window, with the files named, those that do not exist as new ones; without any, with what was open last time.
    // Then what a crash has left is offered.
    void Show(const std::vector<Place>& wanted);

    // Lines and columns from 1, columns in bytes; 0 for none. False when the file could not be read, which was told.
    bool Open(const std::string& path, long line = 0, long column = 0);
    bool OpenUnsaved(const std::string& path, const std::string& text); // as an edit of what the file holds now
    void New();
    bool Close(long document); // false when the user wants to keep it
    bool Quit();               // closes all; false when the user wants to go on

    void OpenAsked(); // asks which
    void Save();
    void SaveAs();
    void SaveAll();
    void Revert();
    void CloseCurrent();

    void GoBack();
    void GoForward();
    void GoToLine();
    void Run(const std::string& command); // the editor's own, or a registered one of the plug-in's
    void OpenWorksheet();
    void OpenPreferences();
    void UseZoom(int steps); // 0: none
    void AboutSymbols();
    void About();
    void ShowNotices(); // all that the bar has told and not withdrawn, as a text

    // For those who build on it.
    MainWindow& Window() { return *window; }
    DesktopFace& TheFace() { return *face; }
    Host& TheHost() { return *host; }
    QtDisplay& Display() { return *display; }
    GuiLoop& Loop() { return *loop; }
    FileKeeper& Files() { return *files; }
    KeyRouter& Router() { return *router; }
    WorksheetActions& TheWorksheet() { return *worksheet; }
    SessionKeeper& Session() { return *session; }
    SettingsKeeper& Settings() { return *settings; }
    void StopAtEnd(int signal); // what runs for the plug-in, without a question
    const Preferences& ThePreferences() const { return preferences; }
    const PlaceStack& Places() const { return places; }
    Document* Current();
    CodeView* CurrentView();

signals:
    void DocumentsChanged(); // opened, closed, raised, saved or renamed
    void TextEdited();       // the current one, by whatever

private:
    void MakeHost(const DesktopOptions& options);
    void Connect();
    void ApplyPreferences();
    bool MayStopCommand(); // true when none runs
    bool MayStopTags();    // true when none are made
    void FollowColours();
    void BindKeys();
    void OpenOrNew(const Place& place);
    void OpenNew(const std::string& absolute); // no file yet: it is made when the text is saved
    // A document of the file, or of the text; null when there can be none, which was told.
    Document* Load(const std::string& absolute, const std::optional<std::string>& text);
    void OpenMatch(const std::string& path, long line);
    VisitedPlace Here();
    void GoTo(const std::optional<VisitedPlace>& place);
    void Raised(long document);
    void ShowName(const Document& document, bool modified);
    void ShowState();
    void ShowTitle();
    void Closed(long document);
    Document* Adopt(Document* document); // sets up what was opened just now
    void Warn(const std::string& text);

    Preferences preferences;
    EditorLook look;
    PlaceStack places;
    int zoom = 0;
    bool quitting = false;
    const bool restoresSession;
    QStringList problems; // told once the window is there; loading the bundle may be the first

    std::unique_ptr<QtDisplay> display;
    std::unique_ptr<GuiLoop> loop;
    std::unique_ptr<Complaints> complaints;
    std::unique_ptr<PluginBundle> bundle;
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<DesktopFace> face;
    std::unique_ptr<TagsKeeper> tags; // null where they are not guarded
    std::unique_ptr<Witnesses> witnesses;
    std::unique_ptr<Host> host;
    std::unique_ptr<KeyRouter> router;
    std::unique_ptr<FileKeeper> files;
    std::unique_ptr<WorksheetActions> worksheet;
    std::unique_ptr<SettingsKeeper> settings;
    std::unique_ptr<SessionKeeper> session;
    std::unique_ptr<EditorMenus> menus;
};

} // namespace wren
