#include "vetch/display/HeadlessDisplay.h"

#include "base/Utf8.h"
#include "vetch/app/Loop.h"
#include "vetch/display/HeadlessMirror.h"
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

HeadlessDisplay::HeadlessDisplay(DisplayObserver* observer)
    : observer(observer == nullptr ? &nobody : observer), mirror(std::make_unique<HeadlessMirror>())
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

// Updates

void HeadlessDisplay::Apply(Update update)
{
    std::visit([this](const auto& change) { Show(change); }, update);
}

template <class Unnoticed>
void HeadlessDisplay::Show(const Unnoticed& change)
{
    const std::lock_guard lock(mutex);
    mirror->Apply(change);
}

void HeadlessDisplay::Show(const WindowClosed& closed)
{
    const std::lock_guard order(turn);
    const long noticed = Change(closed.window, [this, &closed](HeadlessMirror::Window& window) {
        const long number = window.shownOnce ? window.state.number : 0;
        mirror->Forget(closed.window);
        return number;
    });
    if (noticed != 0)
        observer->WindowClosed(noticed);
}

void HeadlessDisplay::Show(const WindowShown& shown)
{
    HandlerToken activated = kNoHandler;
    {
        const std::lock_guard order(turn);
        const long noticed = Change(shown.window, [&activated](HeadlessMirror::Window& window) {
            if ((window.state.flags & B_AVOID_FOCUS) == 0)
                activated = window.handler;
            window.shownOnce = true;
            return std::exchange(window.state.visible, true) ? 0 : window.state.number;
        });
        if (noticed != 0)
            observer->WindowShown(noticed);
    }
    if (activated != kNoHandler)
        PostToHandler(activated, Activation(true));
}

void HeadlessDisplay::Show(const WindowHidden& hidden)
{
    const std::lock_guard order(turn);
    const long noticed = Change(hidden.window, [](HeadlessMirror::Window& window) {
        return std::exchange(window.state.visible, false) ? window.state.number : 0;
    });
    if (noticed != 0)
        observer->WindowHidden(noticed);
}

void HeadlessDisplay::Show(const WindowMoved& moved)
{
    const std::lock_guard order(turn);
    const long noticed = Change(moved.window, [&moved](HeadlessMirror::Window& window) {
        const bool changed = std::exchange(window.state.frame, moved.frame) != moved.frame;
        return changed && window.state.visible ? window.state.number : 0;
    });
    if (noticed != 0)
        observer->WindowMoved(noticed, moved.frame);
}

void HeadlessDisplay::Show(const WindowActivated& activated)
{
    std::vector<HandlerToken> others;
    Change(activated.window, [this, &others, &activated](HeadlessMirror::Window& window) {
        window.state.active = activated.active;
        if (activated.active)
            others = mirror->OtherActiveWindows(activated.window);
    });
    for (const HandlerToken other : others)
        PostToHandler(other, Activation(false));
}

void HeadlessDisplay::Show(const Beeped&)
{
    const std::lock_guard order(turn);
    {
        const std::lock_guard lock(mutex);
        ++beeps;
    }
    observer->Beeped();
}

void HeadlessDisplay::Show(const PanelOpened& opened)
{
    std::optional<std::optional<std::string>> answer;
    {
        const std::lock_guard lock(mutex);
        answer = TakeFirst(panelAnswers);
    }
    {
        const std::lock_guard order(turn);
        observer->PanelOpened(opened.panel);
    }
    if (!answer)
        return;
    BMessage done(kPanelDone);
    if (*answer) {
        const EntryRef chosen((*answer)->c_str());
        done.AddRef("refs", &chosen);
    }
    PostToHandler(opened.panel.handler, done);
}

// Questions

float HeadlessDisplay::StringWidth(const std::string& text, float /*fontSize*/) const
{
    return kCharacterWidth * static_cast<float>(base::CountCodePoints(text));
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
    observer->AlertAnswered(alert, answer);
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
    observer->MenuAnswered(menu, choice);
    return choice;
}

} // namespace vetch
