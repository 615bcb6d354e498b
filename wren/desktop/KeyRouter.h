// What a key, a click or a change in a view means for the plug-in.
#pragma once

#include "wren/core/Face.h"
#include "wren/desktop/display/KeyInput.h"
#include "wren/desktop/editor/CodeView.h"

#include <functional>
#include <string>

namespace wren {

class GuiLoop;
class Host;
class QtDisplay;

// A key of a view goes to the list of matches first, when there is one and the key moves in it; then to the plug-in;
// then to the text. GUI thread.
class KeyRouter : public CodeViewClient {
public:
    KeyRouter(Host& host, QtDisplay& display, GuiLoop& loop); // borrowed

    ModifierKeys keys;             // which key is which modifier
    bool controlClicks = false;    // a click with Control looks up, instead of one with the option key
    std::function<void()> onCaret; // the caret moved, in the current view
    std::function<void(CodeView&, bool modified)> onModified;
    std::function<void(CodeView&)> onChanged;                                         // the text, by whatever
    std::function<void(CodeView&, long offset, long removed, long inserted)> onMoves; // the text, while it changes

    MouseState Mouse() const { return mouse; } // of the click that is being told of

    // Runs a registered command as its key does: the plug-in sees the key first.
    void RunBound(const std::string& command);
    void RunChosen(const std::string& command); // as the plug-in's own menu item does

    void ButtonClicked(Qt::KeyboardModifiers held); // the plug-in's: it may ask what was held

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
    uint32 ClickBits(Qt::KeyboardModifiers held) const;

    Host& host;
    QtDisplay& display;
    GuiLoop& loop;
    MouseState mouse;
};

} // namespace wren
