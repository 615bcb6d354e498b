#include "vetch/display/HeadlessDisplay.h"

#include "vetch/app/Loop.h"
#include "vetch/display/HeadlessMirror.h"
#include "vetch/display/Utf8.h"
#include "vetch/display/WindowKinds.h"

#include <type_traits>
#include <utility>

namespace vetch {

namespace {

constexpr float kCharacterWidth = 7;
constexpr FontMetrics kMetrics{.ascent = 10, .descent = 3, .leading = 1};
constexpr float kScrollBarWidth = 11;

BMessage Activation(bool active)
{
    BMessage message(kActivated);
    message.AddInt32("active", active);
    return message;
}

template <class T>
std::optional<T> TakeFirst(std::deque<T>& queue)
{
    if (queue.empty())
        return std::nullopt;
    T first = queue.front();
    queue.pop_front();
    return first;
}

} // namespace

// Returns 'operation' of the window; a default value for an unknown window.
template <class Operation>
auto HeadlessDisplay::Change(LooperToken token, Operation operation)
{
    using Result = std::invoke_result_t<Operation, HeadlessMirror::Window&>;
    const std::lock_guard lock(mutex);
    HeadlessMirror::Window* window = mirror->Find(token);
    return window == nullptr ? Result() : operation(*window);
}

template <class Operation>
void HeadlessDisplay::ChangeView(HandlerToken token, Operation operation)
{
    const std::lock_guard lock(mutex);
    if (HeadlessMirror::View* view = mirror->FindView(token))
        operation(*view);
}

HeadlessDisplay::HeadlessDisplay(DisplayWitness* witness)
    : witness(witness == nullptr ? &silentWitness : witness), mirror(std::make_unique<HeadlessMirror>())
{
}

HeadlessDisplay::~HeadlessDisplay() = default;

std::vector<HeadlessDisplay::WindowState> HeadlessDisplay::Windows() const
{
    const std::lock_guard lock(mutex);
    return mirror->States();
}

long HeadlessDisplay::Beeps() const
{
    const std::lock_guard lock(mutex);
    return beeps;
}

void HeadlessDisplay::SetScreen(BRect frame)
{
    const std::lock_guard lock(mutex);
    screen = frame;
}

void HeadlessDisplay::AnswerAlert(long button)
{
    const std::lock_guard lock(mutex);
    alertAnswers.push_back(button);
}

void HeadlessDisplay::AnswerMenu(std::optional<long> row)
{
    const std::lock_guard lock(mutex);
    menuAnswers.push_back(row);
}

void HeadlessDisplay::AnswerPanel(std::optional<std::string> path)
{
    const std::lock_guard lock(mutex);
    panelAnswers.push_back(std::move(path));
}

// Windows

void HeadlessDisplay::WindowMade(const WindowDescription& window)
{
    const std::lock_guard lock(mutex);
    mirror->Make(window);
}

void HeadlessDisplay::WindowClosed(LooperToken token)
{
    const std::lock_guard order(turn);
    const long noticed = Change(token, [this, token](HeadlessMirror::Window& window) {
        const long number = window.shownOnce ? window.state.number : 0;
        mirror->Forget(token);
        return number;
    });
    if (noticed != 0)
        witness->WindowClosed(noticed);
}

void HeadlessDisplay::WindowShown(LooperToken token)
{
    HandlerToken activated = kNoHandler;
    {
        const std::lock_guard order(turn);
        const long noticed = Change(token, [&activated](HeadlessMirror::Window& window) {
            if ((window.state.flags & B_AVOID_FOCUS) == 0)
                activated = window.handler;
            window.shownOnce = true;
            return std::exchange(window.state.visible, true) ? 0 : window.state.number;
        });
        if (noticed != 0)
            witness->WindowShown(noticed);
    }
    if (activated != kNoHandler)
        PostToHandler(activated, Activation(true));
}

void HeadlessDisplay::WindowHidden(LooperToken token)
{
    const std::lock_guard order(turn);
    const long noticed = Change(token, [](HeadlessMirror::Window& window) {
        return std::exchange(window.state.visible, false) ? window.state.number : 0;
    });
    if (noticed != 0)
        witness->WindowHidden(noticed);
}

void HeadlessDisplay::WindowMoved(LooperToken token, BRect frame)
{
    const std::lock_guard order(turn);
    const long noticed = Change(token, [frame](HeadlessMirror::Window& window) {
        const bool moved = std::exchange(window.state.frame, frame) != frame;
        return moved && window.state.visible ? window.state.number : 0;
    });
    if (noticed != 0)
        witness->WindowMoved(noticed, frame);
}

void HeadlessDisplay::WindowMinimized(LooperToken, bool) {} // not mirrored

void HeadlessDisplay::WindowLimited(LooperToken token, float minWidth, float maxWidth, float minHeight, float maxHeight)
{
    Change(token, [=](HeadlessMirror::Window& window) {
        window.state.limits = {minWidth, maxWidth, minHeight, maxHeight};
    });
}

void HeadlessDisplay::WindowTitled(LooperToken token, const std::string& title)
{
    Change(token, [&title](HeadlessMirror::Window& window) { window.state.title = title; });
}

void HeadlessDisplay::WindowActivated(LooperToken token, bool active)
{
    std::vector<HandlerToken> others;
    Change(token, [this, &others, token, active](HeadlessMirror::Window& window) {
        window.state.active = active;
        if (active)
            others = mirror->OtherActiveWindows(token);
    });
    for (const HandlerToken other : others)
        PostToHandler(other, Activation(false));
}

void HeadlessDisplay::WindowFocused(LooperToken token, HandlerToken view)
{
    Change(token, [view](HeadlessMirror::Window& window) { window.focus = view; });
}

// Views

void HeadlessDisplay::ViewMade(const ViewDescription& view)
{
    const std::lock_guard lock(mutex);
    mirror->Make(view);
}

void HeadlessDisplay::ViewMoved(HandlerToken token, BRect frame)
{
    ChangeView(token, [frame](HeadlessMirror::View& view) { view.description.frame = frame; });
}

void HeadlessDisplay::ListItemAdded(HandlerToken token, long index, const std::string& text)
{
    ChangeView(token,
               [&](HeadlessMirror::View& view) { view.list.items.insert(view.list.items.begin() + index, text); });
}

void HeadlessDisplay::ListItemRemoved(HandlerToken token, long index)
{
    ChangeView(token, [index](HeadlessMirror::View& view) { view.list.items.erase(view.list.items.begin() + index); });
}

void HeadlessDisplay::ListItemChanged(HandlerToken token, long index, const std::string& text)
{
    ChangeView(token, [&](HeadlessMirror::View& view) { view.list.items[index] = text; });
}

void HeadlessDisplay::ListSelected(HandlerToken token, long index)
{
    ChangeView(token, [index](HeadlessMirror::View& view) { view.list.selected = index; });
}

void HeadlessDisplay::ListColoured(HandlerToken token, rgb_color selection)
{
    ChangeView(token, [selection](HeadlessMirror::View& view) { view.list.colour = selection; });
}

void HeadlessDisplay::TextChanged(HandlerToken token, const std::string& text)
{
    ChangeView(token, [&text](HeadlessMirror::View& view) { view.control.text = text; });
}

void HeadlessDisplay::TextSelected(HandlerToken token, long start, long end)
{
    ChangeView(token, [=](HeadlessMirror::View& view) {
        view.control.selectionStart = start;
        view.control.selectionEnd = end;
    });
}

void HeadlessDisplay::CheckChanged(HandlerToken token, bool on)
{
    ChangeView(token, [on](HeadlessMirror::View& view) { view.control.on = on; });
}

// Sound and questions

void HeadlessDisplay::Beep()
{
    const std::lock_guard order(turn);
    {
        const std::lock_guard lock(mutex);
        ++beeps;
    }
    witness->Beeped();
}

float HeadlessDisplay::StringWidth(const std::string& text, float /*fontSize*/) const
{
    return kCharacterWidth * static_cast<float>(CountCodePoints(text));
}

FontMetrics HeadlessDisplay::Metrics(float /*fontSize*/) const
{
    return kMetrics;
}

float HeadlessDisplay::MiniScrollBarWidth() const
{
    return kScrollBarWidth;
}

BRect HeadlessDisplay::ScreenFrame(BPoint /*where*/) const
{
    const std::lock_guard lock(mutex);
    return screen;
}

long HeadlessDisplay::RunAlert(const AlertDescription& alert)
{
    const std::lock_guard order(turn);
    const long last = static_cast<long>(alert.buttons.size()) - 1;
    long answer = last;
    {
        const std::lock_guard lock(mutex);
        answer = TakeFirst(alertAnswers).value_or(last);
    }
    if (answer < 0 || answer > last)
        answer = last;
    witness->AlertAnswered(alert, answer);
    return answer;
}

std::optional<long> HeadlessDisplay::RunMenu(const MenuDescription& menu)
{
    const std::lock_guard order(turn);
    std::optional<long> choice;
    {
        const std::lock_guard lock(mutex);
        choice = TakeFirst(menuAnswers).value_or(std::nullopt);
    }
    const long rows = static_cast<long>(menu.rows.size());
    if (choice && (*choice < 0 || *choice >= rows || !menu.rows[*choice].enabled || menu.rows[*choice].label.empty()))
        choice.reset();
    witness->MenuAnswered(menu, choice);
    return choice;
}

void HeadlessDisplay::OpenPanel(const PanelDescription& panel)
{
    std::optional<std::optional<std::string>> answer;
    {
        const std::lock_guard lock(mutex);
        answer = TakeFirst(panelAnswers);
    }
    {
        const std::lock_guard order(turn);
        witness->PanelOpened(panel);
    }
    if (!answer)
        return;
    BMessage done(kPanelDone);
    if (*answer) {
        const EntryRef chosen((*answer)->c_str());
        done.AddRef("refs", &chosen);
    }
    PostToHandler(panel.handler, done);
}

} // namespace vetch
