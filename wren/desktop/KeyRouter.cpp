#include "wren/desktop/KeyRouter.h"

#include "vetch/app/Modifiers.h"
#include "wren/core/HeldModifiers.h"
#include "wren/core/Host.h"
#include "wren/desktop/GuiLoop.h"
#include "wren/desktop/display/QtDisplay.h"
#include "wren/desktop/display/UserPosts.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <utility>

namespace wren {

namespace {

constexpr const char* kCompletion = "SymbolCompletion";

// All buttons that are down: a click with two of them looks nothing up.
uint32 ButtonBits(Qt::MouseButtons down)
{
    uint32 bits = 0;
    bits |= down.testFlag(Qt::LeftButton) ? 1u : 0u;
    bits |= down.testFlag(Qt::RightButton) ? 2u : 0u;
    bits |= down.testFlag(Qt::MiddleButton) ? 4u : 0u;
    return bits;
}

// For a scope. A menu of the plug-in's lets the user press other keys meanwhile, so questions may be nested.
class Asks {
public:
    Asks(std::optional<KeyRouter::Question>& question, KeyRouter::Question now)
        : question(question), before(std::exchange(question, now))
    {
    }
    ~Asks() { question = before; }
    Asks(const Asks&) = delete;
    Asks& operator=(const Asks&) = delete;

private:
    std::optional<KeyRouter::Question>& question;
    const std::optional<KeyRouter::Question> before;
};

} // namespace

KeyRouter::KeyRouter(Host& host, QtDisplay& display, GuiLoop& loop) : host(host), display(display), loop(loop) {}

// The end of a command that edits is reported to the plug-in, which then closes all its windows but completions. A list
// of matches would close as soon as it opened, so commands that only look something up do not take that way.
void KeyRouter::RunBound(const std::string& command)
{
    if (command == kCompletion && onCompletion && onCompletion())
        return;
    RunPlugins(command);
}

void KeyRouter::RunPlugins(const std::string& command)
{
    const Asks asks(question, {});
    const KeyBinding binding = host.Commands().BindingOf(command);
    if (command == kCompletion && binding.key != 0) {
        const HeldModifiers held(binding.modifiers);
        host.RouteKey({std::string(1, binding.key), binding.modifiers});
        loop.LetThrough();
    } else {
        RunChosen(command);
    }
}

void KeyRouter::RunChosen(const std::string& command)
{
    const Asks asks(question, {});
    host.Events().Command(command);
    loop.LetThrough();
}

void KeyRouter::ButtonClicked(Qt::KeyboardModifiers pressed)
{
    const Asks asks(question, {});
    const HeldModifiers held(ModifierBits(pressed, keys));
    host.Events().ButtonClicked();
    loop.LetThrough();
}

void KeyRouter::ButtonPopUp()
{
    const Asks asks(question, {});
    host.Events().ButtonPopUp();
    loop.LetThrough();
}

bool KeyRouter::KeyPressed(CodeView& view, const QKeyEvent& event)
{
    if (onKey && onKey(view, event))
        return true;
    const std::optional<KeyStroke> stroke = StrokeOf(event, keys);
    if (!stroke || host.Current() == nullptr)
        return false;
    display.Drain();
    if (RoutedToMatches(*stroke) || CompletedOtherwise(*stroke))
        return true;
    const Asks asks(question, {});
    const HeldModifiers held(stroke->modifiers);
    const bool applies = host.RouteKey(*stroke).applies;
    loop.LetThrough();
    return !applies;
}

bool KeyRouter::TextComing(CodeView&, const std::string& utf8)
{
    if (host.Current() == nullptr)
        return false;
    const bool applies = host.RouteKey({utf8, 0}).applies;
    loop.LetThrough();
    return !applies;
}

// The plug-in's windows appear when the event loop runs next, after the text has been painted: opening a list takes
// longer than drawing the character that caused it.
void KeyRouter::KeyApplied(CodeView& view, bool typed)
{
    const bool isElsewhere = typed && onTyped && onTyped(view);
    if (typed && !isElsewhere)
        host.Events().KeyTyped();
    else
        host.Events().PrimitiveDone();
    if (onChanged)
        onChanged(view);
}

bool KeyRouter::MousePressed(CodeView& view, const QMouseEvent& event)
{
    const HeldModifiers held(ClickBits(event.modifiers()));
    const Asks asks(question, {view.OffsetAtPoint(view.PointOf(event))});
    mouse = {view.PointOf(event), ButtonBits(event.buttons())};
    const bool lookedUp = host.Events().MouseDown() == 2;
    mouse.buttons = 0;
    loop.LetThrough();
    return lookedUp;
}

void KeyRouter::ChangedOtherwise(CodeView& view)
{
    host.Events().DocumentChanged();
    if (onChanged)
        onChanged(view);
    loop.LetThrough();
}

void KeyRouter::TextMoves(CodeView& view, long offset, long removed, long inserted)
{
    if (onMoves)
        onMoves(view, offset, removed, inserted);
}

void KeyRouter::CaretMoved(CodeView&)
{
    if (onCaret)
        onCaret();
}

void KeyRouter::ModifiedSet(CodeView& view, bool modified)
{
    if (onModified)
        onModified(view, modified);
}

// The window of matches never takes the keyboard, so that typing continues in the text. The list gets the keys that
// move in it, and every other key closes it.
bool KeyRouter::RoutedToMatches(const KeyStroke& stroke)
{
    const QtDisplay::ListWindow front = display.FrontList();
    if (front.window == 0 || stroke.bytes.size() != 1 || stroke.modifiers != 0)
        return false;
    switch (stroke.bytes.front()) {
    case KeyCode::kEscape:
        PostQuitRequested(front.handler);
        return true;
    case KeyCode::kEnter:
        if (front.selected < 0) // the one that Enter means
            PostKeyDown(front.list, {std::string(1, KeyCode::kDown), 0});
        [[fallthrough]];
    case KeyCode::kUp:
    case KeyCode::kDown:
        PostKeyDown(front.list, stroke);
        return true;
    default:
        return false;
    }
}

bool KeyRouter::CompletedOtherwise(const KeyStroke& stroke) const
{
    const KeyBinding binding = host.Commands().BindingOf(kCompletion);
    const bool isAsked =
        binding.key != 0 && stroke.bytes == std::string(1, binding.key) && stroke.modifiers == binding.modifiers;
    return isAsked && onCompletion && onCompletion();
}

// With the second pair of clicks, Control means the option key, and Control with Shift adds the control key.
uint32 KeyRouter::ClickBits(Qt::KeyboardModifiers held) const
{
    if (!controlClicks)
        return ModifierBits(held, keys);
    if (!held.testFlag(Qt::ControlModifier))
        return ModifierBits(held, keys) & ~B_OPTION_KEY;
    const uint32 control = held.testFlag(Qt::ShiftModifier) ? B_CONTROL_KEY : 0u;
    return B_OPTION_KEY | control;
}

} // namespace wren
