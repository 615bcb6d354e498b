// What can happen to the plug-in, an operation an event.
#pragma once

#include "vetch/storage/EntryRef.h"
#include "wren/core/EventRecord.h"

#include <optional>
#include <string>
#include <vector>

namespace wren {

class Document;
class Documents;
class PluginCalls;

// A key and the modifiers held with it.
//
// 'bytes' is the character without control, and without shift while control is held: '.', not '>'. The keys that type
// nothing have the codes below.
struct KeyStroke {
    std::string bytes; // UTF-8
    uint32 modifiers = 0;
};

namespace KeyCode {

constexpr char kBackspace = 0x08;
constexpr char kTab = 0x09;
constexpr char kEnter = 0x0a;
constexpr char kEscape = 0x1b;
constexpr char kLeft = 0x1c;
constexpr char kRight = 0x1d;
constexpr char kUp = 0x1e;
constexpr char kDown = 0x1f;
constexpr char kDelete = 0x7f;

// A function key has no character. Where it is bound it stands as a byte that begins none in UTF-8, so that menus can
// name it; F1 to F12 are 1 to 12.
constexpr int kFunctionKeys = 12;
constexpr char OfFunctionKey(int number)
{
    return static_cast<char>(0x80 + number);
}
constexpr int FunctionKeyOf(char key) // 0: it is none
{
    const int number = static_cast<unsigned char>(key) - 0x80;
    return number >= 1 && number <= kFunctionKeys ? number : 0;
}

} // namespace KeyCode

// Sends each event with the current document and its window, unless another is named; with neither when there is none.
// The answers are the plug-in's. Document thread.
class PluginEvents {
public:
    PluginEvents(PluginCalls& calls, const Documents& documents); // borrowed

    void FirstContact();
    void Register();
    bool SettingsLine(const std::string& line);                  // whether it was accepted
    long SettingsCommand(const std::vector<std::string>& words); // at least one word
    void MenuBarBuilt();
    void ResourceIDs();
    void OfferPanels();
    void Unload();

    void MenusShowing();
    long ButtonClicked();
    long ButtonPopUp();
    long Command(const std::string& name);
    long MouseDown();

    long KeyDown(const KeyStroke& key);
    long KeyTyped();
    long PrimitiveDone();

    long Activated();
    long Deactivated();
    long DocumentChanged();
    long Dismissed();
    long Obscured();

    long MessageFor(long document, const BMessage& message); // 0 for none
    void SaveSettings();
    std::optional<std::string> Setting(const std::string& name); // nothing when the plug-in has no such setting
    long OpenPanel(const std::string& identifier, vetch::HandlerToken view);

    // The files that declare 'symbol', an include-style name, as the tags that serve the document's directory know
    // them.
    std::vector<EntryRef> FilesOfSymbol(const Document& document, const std::string& symbol);

    EventRecord RecordFor(long event) const; // with the current document and its window
    EventAnswer Send(const EventRecord& event);

private:
    long SendPlain(long event);

    PluginCalls& calls;
    const Documents& documents;
};

// The directory of a document's file; "" without a file.
std::string DirectoryOf(const Document& document);

} // namespace wren
