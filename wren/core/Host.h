// The editor without a face: everything that its faces share.
//
// A face implements Face and HostObserver, sets the display, loads the bundle and makes a Host; then it calls Start(),
// lets its user work, and calls ShutDown(). Between the user's actions it lets messages through with
// vetch::RunPending() or vetch::Settle().
#pragma once

#include "wren/core/CommandTable.h"
#include "wren/core/Documents.h"
#include "wren/core/HostApplication.h"
#include "wren/core/HostRecord.h"
#include "wren/core/Menus.h"
#include "wren/core/PluginCalls.h"
#include "wren/core/PluginEvents.h"
#include "wren/core/PreferencePanels.h"
#include "wren/core/SettingsStore.h"
#include "wren/core/Worksheet.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class BWindow;

namespace wren {

class Face;
class HostObserver;
class OwnSettings;
class PluginBundle;

// How a key stroke went until the host would apply it to the text.
struct KeyRouting {
    long returned = 0;    // the plug-in's answer to the key
    bool applies = false; // the face should do what the key does, and then send KeyTyped() or PrimitiveDone()
};

// Makes be_app. Document thread, which is the one that makes it; at most one at a time.
class Host : private ApplicationClient {
public:
    // Borrows all but the file's name, "" for settings that are kept nowhere.
    Host(PluginBundle& bundle, Face& face, HostObserver& observer, const std::string& settingsFile);
    ~Host() override; // shuts down if that was not done

    // Before Start(): settings of the face's own, in the same file. Its lines are given to it and not to the plug-in,
    // and what is wrong with any line of the file is told by Face::Warn, once a line. Borrowed.
    void SetOwnSettings(OwnSettings* settings);

    // Where the Worksheet's lines run, unless it is to be its file's directory.
    void SetWorksheetDirectory(const std::string& path) { worksheet.SetDirectory(path); }

    // Makes the user's cache directory, unless nothing is to be touched, has the plug-in register itself and gives it
    // its stored settings. What goes wrong with either is told by Face::Warn and stops nothing.
    enum class CacheDirectory { Make, LeaveAlone };
    void Start(CacheDirectory directory = CacheDirectory::Make);

    // Closes what is open, has what still loads in the background end early and waits for that, and unloads the
    // plug-in. Idempotent.
    void ShutDown();

    // Opens a document, or goes to it when it is open already, and makes it the current one. 'text' takes the place of
    // the file's content. Null, with the reason in '*error', when the file cannot be read; nothing has changed then.
    Document* Open(const std::string& path, const std::optional<std::string>& text, bool worksheet, std::string* error);
    Document& New(); // a document without a file, now the current one
    void MakeCurrent(Document& document);

    // The face asks its user about unsaved changes first, and makes another document the current one afterwards.
    void Close(Document& document);

    // The user came to the editor's window, or went to another program's.
    void UserCame();
    void UserLeft();

    KeyRouting RouteKey(const KeyStroke& key);
    std::optional<std::string> Undo(); // the name of what the current document took back; nothing when there is nothing

    // The user opens the menu "Search" and picks that item: its command runs if it is enabled. Answers whether it is;
    // nothing when there is no such item.
    std::optional<bool> ChooseFromSearchMenu(const std::string& label);

    // The panel's window, shown. With an empty identifier, the first panel that the plug-in has registered.
    BWindow* OpenPreferences(const std::string& identifier, long* returned);
    BWindow* MakePreferencePanel(const std::string& identifier, long* returned); // the same, not shown yet
    const std::vector<PreferencePanel>& Panels() const { return panels.Registered(); }

    void NoteSettings();                   // what was chosen just now counts as chosen, even if it is taken back soon
    bool SaveSettings(std::string* error); // false, with the reason, when the file could not be written

    // Delivers all messages and waits for background loads and tags generation; false at the time limit.
    bool WaitForBackground(std::chrono::milliseconds limit);

    Documents& AllDocuments() { return documents; }
    Document* Current() { return documents.Current(); }
    CommandTable& Commands() { return commands; }
    Menus& MenuBar() { return menus; }
    const Worksheet& TheWorksheet() const { return worksheet; }
    PluginBundle& Bundle() { return bundle; }
    PluginEvents& Events() { return events; }
    bool IsUnloaded() const { return calls.IsUnloaded(); }

private:
    void MessageForDocument(long document, const BMessage& message) override;
    void MessageForFrontDocument(const BMessage& message) override;
    void OpenMatch(const std::string& path, long line) override;
    void TagsFileUnread(const std::string& path, const std::string& why) override;
    void SendStoredSettings();
    void HaveSettingsWritten();
    bool IsOwn(const std::string& setting) const;
    void SendToPlugin(const StoredLine& line);
    void TakeOwn(const StoredLine& line);
    void WarnAboutUnknown(const StoredLine& line);
    void WarnAbout(const StoredLine& line, const std::string& problem, const char* otherRemedy);

    PluginBundle& bundle;
    Face& face;
    std::unique_ptr<HostApplication> application;
    Menus menus;
    Documents documents;
    CommandTable commands;
    SettingsStore settings;
    OwnSettings* own = nullptr;
    std::vector<std::string> ownNames;
    Worksheet worksheet;
    PreferencePanels panels;
    PluginCalls calls;
    PluginEvents events;
    bool started = false;
};

} // namespace wren
