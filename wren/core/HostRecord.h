// The plug-in's view of the editor during one call.
#pragma once

#include "plugin/PluginInterface.h"
#include "wren/core/EventRecord.h"

#include <string>
#include <vector>

namespace wren {

class CommandTable;
class Document;
class Documents;
class Face;
class HostObserver;
class Menus;
class PluginBundle;
class PreferencePanels;
class SettingsStore;
class Worksheet;

// The parts of the host that operations use. Borrowed; they outlive the record.
struct HostParts {
    Documents& documents;
    CommandTable& commands;
    SettingsStore& settings;
    Menus& menus;
    Worksheet& worksheet;
    PreferencePanels& panels;
    PluginBundle& bundle;
    const Face& face;
    HostObserver& observer;
};

// Lives for one call of PluginMain, and borrows 'event' for it. With no document, edits do nothing.
class HostRecord final : public PluginInterface {
public:
    HostRecord(const HostParts& parts, const EventRecord& event);
    ~HostRecord(); // closes an undo group that the call left open
    HostRecord(const HostRecord&) = delete;
    HostRecord& operator=(const HostRecord&) = delete;

    EventAnswer TakeAnswer(long returned);

    void SetResourceIDs(long first, long second) override;
    void GetSelection(long* start, long* end) override;
    long TextLength() override;
    void GetText(char* buffer, long offset, long length) override;
    char CharAt(long offset) override;
    void GetMouse(BPoint* where, uint32* buttons, bool checkQueue) override;
    long OffsetAt(const BPoint* where) override;
    BPoint PointAt(long offset) const override;
    BRect TextBounds() override;
    BRect ButtonFrame() override;
    void RegisterSetting(const char* name) override;
    void RegisterCommand(const char* name, const char* help) override;
    void SetPluginFlags(long flags) override;
    void CommandDone(long status) override;
    const EntryRef* DocumentRef() override;
    bool InputPending() override;
    bool IsWorksheet() override;
    void WriteSettings(const char* format, ...) override __attribute__((format(printf, 2, 3)));
    long LineAt(long offset) override;
    void BeginUndo(long selStart, long selEnd, const char* actionName) override;
    void InsertText(const char* text, long length, long offset) override;
    void DeleteText(long offset, long length) override;
    void Select(long start, long end) override;
    char* ExpandVariables(const char* text, long length) override;
    void AppendToWorksheet(const char* text, bool, bool, bool) override;
    void GetCommandShortcut(const char* command, char* key, uint32* modifiers) override;
    BMenuItem* AddMenuItem(BMenu* menu, long index, const char* label, const char* command, char key,
                           uint32 modifiers) override;
    void RegisterPreferencePanel(const char* identifier, const char* title, const char* iconFile) override;

private:
    const HostParts& parts;
    Document* const document; // null for none
    std::vector<const char*> words;
    const char** wordList = nullptr; // the array behind settingsArgs
};

} // namespace wren
