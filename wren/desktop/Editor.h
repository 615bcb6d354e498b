// The editor that a person sits at: its documents, the plug-in, and the window around them.
#pragma once

#include "wren/core/FirstSettings.h"
#include "wren/core/Preferences.h"
#include "wren/desktop/EditorActions.h"
#include "wren/desktop/editor/EditorLook.h"
#include "wren/text/Place.h"

#include <QObject>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace wren {

class ConfigKeeper;
class DesktopFace;
class DocumentLabels;
class EditorMenus;
class FileKeeper;
class GuiLoop;
class Host;
class HostObserver;
class KeyRouter;
class MainWindow;
class PluginBundle;
class QtDisplay;
class SessionKeeper;
class SettingsKeeper;
class SymbolActions;
class TagsKeeper;
class TagsPlaces;
class TagsRefresher;
class Warnings;
class Welcome;
class HostObservers;

struct DesktopOptions {
    std::string bundle;                                       // a directory
    std::string settingsFile;                                 // "" keeps settings nowhere
    std::vector<std::string> firstSettings = FirstSettings(); // of the plug-in, as for Host::SetFirstSettings()
    std::string folder;                                       // absolute, with a session of its own; "" for none
    bool restoresSession = true;                              // where the preferences do not say otherwise
    bool understandsNames = true;                             // false: the plug-in alone answers
    std::string indexes;              // the directory of all indexes of names; "" for the user's
    bool indexesSystem = true;        // the headers of the system as well
    std::string program;              // "wren", by its path, which keeps tags files current; "" for none
    bool guardsTags = true;           // false hands command lines to a shell as the plug-in wrote them
    HostObserver* observer = nullptr; // of what the plug-in does to the editor; borrowed, null for none

    // For a program that plays the user; null for what the editor does by itself.
    std::function<void(const std::string& path, long line)> openMatch = nullptr;
    std::function<bool()> keysWait = nullptr; // more keys are waiting; Qt cannot tell
    bool raisesWorksheet = true;              // when the plug-in has appended to it
};

// Owns every part, makes them and ends them in the order that the framework wants, and connects them. What a part does
// is the part's own affair. One at a time; GUI thread.
class Editor : public QObject {
    Q_OBJECT
public:
    explicit Editor(const DesktopOptions& options);
    ~Editor() override;

    // Shows the window with the files named, those that do not exist as new documents; without any, with the last
    // session. Then offers what a crash has left.
    void Show(const std::vector<Place>& wanted);

    bool KeepsTagsBusy() const; // a tags file is being made anew, or soon will be

    // Keeps the session, copies of unsaved texts and changed settings, and stops making tags, without a question: the
    // process is about to end. It may be called in the middle of a question or of a plug-in call.
    void PrepareToEnd(int signal);

    EditorActions Actions()
    {
        return {*documents,         *tabActions,   *texts,       *places,           *worksheet,
                *preferenceActions, symbols.get(), finder.get(), filesActions.get()};
    }
    MainWindow& Window() { return *window; }
    Host& TheHost() { return *host; }
    Welcome& TheWelcome() { return *welcome; }

    void LetThrough();                                   // all messages and display updates that are there
    const std::vector<std::string>& RecentFiles() const; // the last one first
    bool HasUnkeptTexts() const;                         // the last copy of some unsaved text could not be written

signals:
    void Woke(); // after messages and display updates were let through

private:
    void MakeHost(const DesktopOptions& options);
    void MakeActions(const DesktopOptions& options);
    void ConnectTexts();
    void ConnectCompletion();
    void ConnectWindow();
    void ConnectPlugin(const DesktopOptions& options);
    void ConnectNotices();
    void RestorePanels();
    void RefreshTagsOf(long document);
    bool Quit(); // closes everything after questions; false when the user keeps the editor

    Preferences preferences;
    EditorLook look;
    const bool restoresSession;
    const bool hasFolder;

    std::unique_ptr<QtDisplay> display;
    std::unique_ptr<GuiLoop> loop;
    std::unique_ptr<Warnings> warnings;
    std::unique_ptr<PluginBundle> bundle;
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<DesktopFace> face;
    std::unique_ptr<TagsKeeper> tags; // null where making tags is not guarded
    std::unique_ptr<HostObservers> observers;
    std::unique_ptr<Host> host;
    std::unique_ptr<KeyRouter> router;
    std::unique_ptr<TagsPlaces> tagsPlaces;
    std::unique_ptr<FileKeeper> files;
    std::unique_ptr<WorksheetActions> worksheet;
    std::unique_ptr<SettingsKeeper> settings;
    std::unique_ptr<DocumentLabels> labels;
    std::unique_ptr<DocumentActions> documents;
    std::unique_ptr<ConfigKeeper> configs;
    std::unique_ptr<TabActions> tabActions;
    std::unique_ptr<TextChooser> texts;
    std::unique_ptr<PlaceActions> places;
    std::unique_ptr<PreferenceActions> preferenceActions;
    std::unique_ptr<SessionKeeper> session;
    std::unique_ptr<TagsRefresher> refresher;   // null where names are not understood
    std::unique_ptr<SymbolActions> symbols;     // null where names are not understood
    std::unique_ptr<FinderActions> finder;      // null there as well
    std::unique_ptr<FilesActions> filesActions; // and this one
    std::unique_ptr<EditorMenus> menus;
    std::unique_ptr<Welcome> welcome;
};

} // namespace wren
