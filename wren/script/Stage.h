// The environment of a script: an editor with the plug-in, and the actions and view of its user.
#pragma once

#include "wren/core/PluginEvents.h"
#include "wren/headless/MenuChoosingDisplay.h"

#include <optional>
#include <string>
#include <vector>

namespace wren {

class Document;
class Host;
class ScriptLog;

// A click into the text: at a point of the text view, or in the middle of the character at an offset.
struct TextClick {
    std::optional<BPoint> at;
    long offset = 0;
    uint32 modifiers = 0;
    uint32 buttons = 1;
};

// The effect of an action shows once the stage has settled. Windows are named by their numbers in the log. Document
// thread.
class Stage {
public:
    using WindowState = vetch::HeadlessDisplay::WindowState;

    virtual ~Stage() = default;

    virtual Host& TheHost() = 0;
    virtual ScriptLog& Log() = 0;
    virtual void Settle() = 0; // delivers all messages

    // Documents. Open() returns null, with the reason, when the file cannot be read. The others return the plug-in's
    // answer. PressKey(), with the stroke's name for StrokeOf(), and Click() at an offset need a current document.
    virtual Document* Open(const std::string& path, const std::optional<std::string>& text, bool worksheet,
                           std::string* error) = 0;
    virtual long PressKey(const std::string& key, const KeyStroke& stroke) = 0;
    virtual long Click(const TextClick& click) = 0;
    virtual std::optional<std::string> Undo() = 0; // the name of the undone edit; nullopt when there is none
    virtual long RunCommand(const std::string& name) = 0;
    virtual long ClickButton(uint32 modifiers) = 0; // the plug-in's
    virtual long ChooseFromButton(
        const std::optional<MenuChoice>& choice) = 0; // from its pop-up menu; nullopt dismisses it

    // Chooses from the menu "Search": runs the item's command if it is enabled, and returns whether it is; nullopt when
    // there is no such item.
    virtual std::optional<bool> ChooseFromMenu(const std::string& label) = 0;

    // Answers for the next alert, a button, and the next file panel, a path; nullopt dismisses the panel.
    virtual void AnswerAlert(long button) = 0;
    virtual void AnswerPanel(const std::optional<std::string>& path) = 0;

    // Windows. False when there is no such window or item.
    virtual std::vector<WindowState> Windows() const = 0;
    virtual bool InvokeItem(long window, long index) = 0;
    virtual bool ClickItem(long window, long index) = 0;
    virtual bool Press(long window, long item) = 0;
    virtual bool Enter(long window, long item, const std::string& text) = 0;
    virtual bool Check(long window, long item, bool on) = 0;
    virtual bool Close(long window) = 0;
    virtual vetch::LooperToken OpenPanel(const std::string& identifier,
                                         long* returned) = 0; // preferences; "": the first

    // The environment.
    virtual void SetScreen(BRect frame) = 0;
    virtual void SetInputPending(bool pending) = 0;
};

} // namespace wren
