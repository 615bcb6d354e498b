// The host boundary: the editor passes this to every call of the plug-in.
#pragma once

#include "vetch/app/BApplication.h"
#include "vetch/app/BMessage.h"
#include "vetch/support/Geometry.h"
#include "vetch/support/Types.h"

#include <cstring>

class BMenu;
class BMenuItem;
class BView;
class BWindow;
struct EntryRef;
struct __CFBundle;

// The editor, as the plug-in sees it during one call of PluginMain.
//
// The host makes and owns it and passes it to each call; the plug-in may keep only a copy of documentID. Call every
// operation on the document thread, which called PluginMain, and only during that call. Offsets and lengths are bytes
// of the document, from 0; ranges are half-open. Without a document the selection is 0, 0, the length 0 and
// DocumentRef() an empty reference.
class PluginInterface {
public:
    BWindow* window = nullptr;             // the event's document window; null when there is none
    BMessage* message = nullptr;           // the event's message (202, 206), or the one to fill (10010)
    long initReplyA = 0;                   // written by the plug-in on event 1
    long initReplyB = 0;                   // written by the plug-in on event 1
    const char* name = nullptr;            // a command (103), a setting (402), the document's directory (10010)
    const char*** settingsArgs = nullptr;  // event 104: null-ended words; the first is the setting's name
    const char* symbol = nullptr;          // event 10010: the requested include-style file name
    long documentID = 0;                   // 1 to INT32_MAX; 0 when there is no document
    char* returnedValue = nullptr;         // event 402: made with new[] by the plug-in, deleted by the host
    BView* panelView = nullptr;            // event 502: the panel's container
    const char* panelIdentifier = nullptr; // event 502: which panel is opened
    __CFBundle* bundle = nullptr;          // the plug-in's bundle, on every call; borrowed

    // Event 307 asks for these two numbers; the host does not interpret them.
    virtual void SetResourceIDs(long first, long second) = 0;

    virtual void GetSelection(long* start, long* end) = 0;
    virtual long TextLength() = 0;

    // Copies 'length' bytes without a terminator; parts outside the text are left out.
    virtual void GetText(char* buffer, long offset, long length) = 0;

    // '\0' outside the text: scanners read one character before its beginning and one behind its end.
    virtual char CharAt(long offset) = 0;

    virtual void GetMouse(BPoint* where, uint32* buttons, bool checkQueue) = 0; // in text view coordinates
    virtual long OffsetAt(const BPoint* where) = 0;                             // of a point in text view coordinates

    // The origin of the character at 'offset' on the SCREEN: x its left edge, y its baseline.
    virtual BPoint PointAt(long offset) const = 0;

    virtual BRect TextBounds() = 0;  // of the text view, in its own coordinates
    virtual BRect ButtonFrame() = 0; // of the plug-in's button, in window coordinates
    virtual void RegisterSetting(const char* name) = 0;
    virtual void RegisterCommand(const char* name, const char* help) = 0;
    virtual void SetPluginFlags(long flags) = 0;
    virtual void CommandDone(long status) = 0;
    virtual const EntryRef* DocumentRef() = 0; // never null; empty for a document without a file
    virtual bool InputPending() = 0;
    virtual bool IsWorksheet() = 0;
    virtual void WriteSettings(const char* format, ...) __attribute__((format(printf, 2, 3))) = 0;
    virtual long LineAt(long offset) = 0; // from 0; only "\n" ends a line

    // Opens one undoable edit, which ends with the call of PluginMain or at the next BeginUndo.
    virtual void BeginUndo(long selStart, long selEnd, const char* actionName) = 0;
    virtual void InsertText(const char* text, long length, long offset) = 0;
    virtual void DeleteText(long offset, long length) = 0;
    virtual void Select(long start, long end) = 0;

    // Expands the host's variables ("$WORKSHEET_DIR") in 'text'; 'length' -1 means up to its terminator. The caller
    // frees the result with delete[]; null for no result.
    virtual char* ExpandVariables(const char* text, long length) = 0;
    virtual void AppendToWorksheet(const char* text, bool, bool, bool) = 0;

    // Writes both outputs; key 0 and modifiers 0 when nothing is bound.
    virtual void GetCommandShortcut(const char* command, char* key, uint32* modifiers) = 0;

    // Inserts an item that runs a named command; the menu owns it.
    virtual BMenuItem* AddMenuItem(BMenu* menu, long index, const char* label, const char* command, char key,
                                   uint32 modifiers) = 0;
    virtual void RegisterPreferencePanel(const char* identifier, const char* title, const char* iconFile) = 0;

    // Sends 'message' to a document from any thread. The host raises event 202 in that document, or drops the message
    // when the document is gone.
    static void PostMessageToDocument(long documentID, const BMessage* message)
    {
        BMessage envelope(FourCC("plgp"));
        envelope.AddInt32("documentID", static_cast<int32>(documentID));
        envelope.AddMessage("message", message);
        be_app->PostMessage(&envelope);
    }

    // Event 402 gets a copy of 'value'; an empty setting is "", an array of one byte. Null returns null.
    void ReturnSettingNameValue(const char* value)
    {
        returnedValue = nullptr;
        if (value == nullptr)
            return;
        const size_t size = std::strlen(value) + 1;
        returnedValue = new char[size];
        std::memcpy(returnedValue, value, size);
    }

protected:
    ~PluginInterface() = default; // not virtual: the table holds only the operations above
};
