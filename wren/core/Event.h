// The numbers by which the host tells the plug-in what has happened.
#pragma once

namespace wren {

// The answer to each is 0 (not handled), 1 (handled) or 2 (handled, and the user's input is used up).
namespace Event {

enum : long {
    kFirstContact = 1, // the plug-in writes initReplyA and initReplyB
    kRegister = 2,     // it registers commands and settings
    kUnload = 3,       // sent once, and nothing after it
    kMenuBarBuilt = 5, // it adds its menu items
    kMenusShowing = 6, // it enables and disables them
    kButtonClicked = 100,
    kButtonPopUp = 101,
    kCommand = 103,         // "name"
    kSettingsCommand = 104, // "settingsArgs", a stored line
    kDocumentMessage = 202, // "message", posted by one of the plug-in's windows
    kMouseDown = 203,       // in the text
    kKeyDown = 206,         // "message"; before the host does anything with the key
    kKeyTyped = 207,        // after a key has put in text
    kPrimitiveDone = 208,   // after a key has edited, moved or run a command
    kDocumentChanged = 209, // by undo, a reload or another view
    kActivated = 300,       // the document's window
    kDeactivated = 301,
    kResourceIDs = 307,
    kDismissed = 308, // pop-ups should go, and the user is not coming from another window
    kObscured = 309,  // pop-ups should go
    kSaveSettings = 400,
    kQuerySetting = 402,    // "name"; answered in "returnedValue"
    kOfferPanels = 500,     // it registers its preference panels
    kOpenPanel = 502,       // "panelView", "panelIdentifier"
    kFilesOfSymbol = 10010, // "name", a directory, and "symbol"; answered in "message"
};

} // namespace Event

} // namespace wren
