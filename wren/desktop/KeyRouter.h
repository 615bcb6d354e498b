// What a key, a click or a change in a view means for the plug-in.
#pragma once

#include "wren/core/Face.h"
#include "wren/desktop/display/KeyInput.h"
#include "wren/desktop/editor/CodeView.h"

#include <functional>
#include <optional>
#include <string>

namespace wren {

class GuiLoop;
class Host;
class QtDisplay;

// A key goes to the editor's own list first, or the list of matches, if there is one and the key moves in it; then to
// the plug-in; then to the text. GUI thread.
class KeyRouter : public CodeViewClient {
public:
    KeyRouter(Host& host, QtDisplay& display, GuiLoop& loop); // borrowed

    ModifierKeys keys;          // which key is which modifier
    bool controlClicks = false; // Control-click looks up, instead of a click with the option key
    std::function<bool(CodeView&, const QKeyEvent&)> onKey; // before the others. true: it is used up
    std::function<bool(CodeView&)> onTyped;                 // true: the plug-in must list nothing for it
    std::function<bool()> onCompletion;                     // the command. true: the plug-in is not asked
    std::function<void()> onCaret;                          // the caret moved, in the current view
    std::function<void(CodeView&, bool modified)> onModified;
    std::function<void(CodeView&)> onChanged; // the text changed, whatever the cause
    std::function<void(CodeView&, long offset, long removed, long inserted)> onMoves; // while the text changes

    // What the plug-in is being asked: about a name at an offset, or about the selection.
    struct Question {
        std::optional<long> offset;
    };
    const std::optional<Question>& Asking() const { return question; } // absent while it is not asked

    MouseState Mouse() const { return mouse; } // at the click that the plug-in is handling

    // Runs a registered command as its key does: the plug-in sees the key first.
    void RunBound(const std::string& command);
    void RunPlugins(const std::string& command); // the same, whatever onCompletion() says
    void RunChosen(const std::string& command);  // as the plug-in's own menu item does

    void ButtonClicked(Qt::KeyboardModifiers held); // the plug-in may ask which keys were held
    void ButtonPopUp();

    bool KeyPressed(CodeView& view, const QKeyEvent& event) override;
    bool TextComing(CodeView& view, const std::string& utf8) override;
    void KeyApplied(CodeView& view, bool typed) override;
    bool MousePressed(CodeView& view, const QMouseEvent& event) override;
    void ChangedOtherwise(CodeView& view) override;
    void TextMoves(CodeView& view, long offset, long removed, long inserted) override;
    void CaretMoved(CodeView& view) override;
    void ModifiedSet(CodeView& view, bool modified) override;

private:
    bool RoutedToMatches(const KeyStroke& stroke);
    bool CompletedOtherwise(const KeyStroke& stroke) const;
    uint32 ClickBits(Qt::KeyboardModifiers held) const;

    Host& host;
    QtDisplay& display;
    GuiLoop& loop;
    MouseState mouse;
    std::optional<Question> question;
};

} // namespace wren
