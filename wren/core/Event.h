// The events that the host sends to the plug-in.
#pragma once

namespace wren {

// The answer to each is 0 (not handled), 1 (handled) or 2 (handled, and the user's input is consumed).
namespace Event {

enum : long {
    kFirstContact = 1, // the plug-in writes initReplyA and initReplyB
    kRegister = 2,     // it registers commands and settings
    kUnload = 3,       // sent once, as the last event
    kMenuBarBuilt = 5, // it adds its menu items
    kMenusShowing = 6, // it enables and disables them
    kButtonClicked = 100,
    kButtonPopUp = 101,
    kCommand = 103,         // "name"
    kSettingsCommand = 104, // "settingsArgs", a stored line
    kDocumentMessage = 202, // "message", posted by one of the plug-in's windows
    kMouseDown = 203,       // in the text
    kKeyDown = 206,         // "message"; before the host handles the key
    kKeyTyped = 207,        // after a key inserted text
    kPrimitiveDone = 208,   // after a key edited, moved or ran a command
    kDocumentChanged = 209, // by undo, a reload or another view
    kActivated = 300,       // the document's window
    kDeactivated = 301,
    kResourceIDs = 307,
    kDismissed = 308, // close pop-ups; the user does not come from another window
    kObscured = 309,  // close pop-ups
    kSaveSettings = 400,
    kQuerySetting = 402,    // "name"; answered in "returnedValue"
    kOfferPanels = 500,     // it registers its preference panels
    kOpenPanel = 502,       // "panelView", "panelIdentifier"
    kFilesOfSymbol = 10010, // "name", a directory, and "symbol"; answered in "message"
};

} // namespace Event

} // namespace wren
