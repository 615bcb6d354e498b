// The editor without a face: everything that its faces share.
//
// A face implements Face and HostObserver, sets the display, loads the bundle and makes a Host. It calls Start(), lets
// its user work, and calls ShutDown(). Between the user's actions it delivers messages with vetch::RunPending() or
// vetch::Settle().
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
#include <utility>
#include <vector>

class BWindow;

namespace wren {

class Face;
class HostObserver;
class OwnSettings;
class PluginBundle;

// The result of routing a key stroke, before it is applied to the text.
struct KeyRouting {
    long returned = 0;    // the plug-in's answer to the key
    bool applies = false; // the face applies the key, then sends KeyTyped() or PrimitiveDone()
};

// Makes be_app. Document thread, which is the thread that makes it; at most one at a time.
class Host : private ApplicationClient {
public:
    // Borrows all but 'settingsFile', which is "" when settings are not stored.
    Host(PluginBundle& bundle, Face& face, HostObserver& observer, const std::string& settingsFile);
    ~Host() override; // shuts down unless ShutDown() was called

    // Adds settings of the face in the same file; call it before Start(). The face gets its lines in place of the
    // plug-in. Face::Warn reports each bad line of the file once. Borrowed.
    void SetOwnSettings(OwnSettings* settings);

    // Values that settings of the plug-in have until others are stored, as lines of the file; call it before Start().
    // They are not stored.
    void SetFirstSettings(std::vector<std::string> lines) { firstSettings = std::move(lines); }

    // The directory in which the Worksheet's lines run, instead of its file's directory.
    void SetWorksheetDirectory(const std::string& path) { worksheet.SetDirectory(path); }

    // Makes the user's cache directory if asked, lets the plug-in register itself and passes it its stored settings.
    // Face::Warn reports problems with either; they stop nothing.
    enum class CacheDirectory { Make, LeaveAlone };
    void Start(CacheDirectory directory = CacheDirectory::Make);

    // Closes everything that is open, cancels background loads and waits for them, and unloads the plug-in. Idempotent.
    void ShutDown();

    // Opens a document, or finds it when it is open already, and makes it the current one. 'text' replaces the file's
    // content. Null, with the reason in '*error' and nothing changed, when the file cannot be read.
    Document* Open(const std::string& path, const std::optional<std::string>& text, bool worksheet, std::string* error);
    Document& New(); // a document without a file, made current
    void MakeCurrent(Document& document);

    // The face first asks its user about unsaved changes, and afterwards makes another document the current one.
    void Close(Document& document);

    // The user switched to the editor's window, or to another program's.
    void UserCame();
    void UserLeft();

    KeyRouting RouteKey(const KeyStroke& key);
    std::optional<std::string> Undo(); // in the current document: the edit's name; nullopt for no edit

    // Opens the menu "Search" and chooses the item: its command runs if it is enabled. Returns whether it is enabled;
    // nullopt when there is no such item.
    std::optional<bool> ChooseFromSearchMenu(const std::string& label);

    // The panel's window, shown. An empty identifier means the plug-in's first registered panel.
    BWindow* OpenPreferences(const std::string& identifier, long* returned);
    BWindow* MakePreferencePanel(const std::string& identifier, long* returned); // not shown yet
    const std::vector<PreferencePanel>& Panels() const { return panels.Registered(); }

    void NoteSettings();                   // the current values count as chosen, even if soon undone
    bool SaveSettings(std::string* error); // false, with the reason, when writing fails

    // Delivers all messages and waits for background loads and tags runs; false at the time limit.
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
    void SendFirstSettings();
    void SendStoredSettings();
    void WriteWithFirst(const std::string& line);
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
    std::vector<std::string> firstSettings;
    Worksheet worksheet;
    PreferencePanels panels;
    PluginCalls calls;
    PluginEvents events;
    bool started = false;
};

} // namespace wren
