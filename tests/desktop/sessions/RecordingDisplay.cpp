#include "tests/desktop/sessions/RecordingDisplay.h"

#include "vetch/display/WindowKinds.h"
#include "wren/core/PluginEvents.h"

namespace {

template <class T>
std::optional<T> NextOf(std::deque<T>& queue)
{
    if (queue.empty())
        return std::nullopt;
    T first = queue.front();
    queue.pop_front();
    return first;
}

} // namespace

RecordingDisplay::RecordingDisplay(vetch::Display& shown, wren::ScriptLog& log, QuestionHands& hands)
    : shown(shown), log(log), hands(hands), record(&log)
{
}

// A window that the record takes for one that never activates: it is the screen that activates windows here.
void RecordingDisplay::WindowMade(const vetch::WindowDescription& window)
{
    vetch::WindowDescription silent = window;
    silent.flags |= B_AVOID_FOCUS;
    record.WindowMade(silent);
    shown.WindowMade(window);
}

void RecordingDisplay::WindowActivated(vetch::LooperToken window, bool active)
{
    shown.WindowActivated(window, active);
}

void RecordingDisplay::WindowClosed(vetch::LooperToken window)
{
    record.WindowClosed(window);
    shown.WindowClosed(window);
}

void RecordingDisplay::WindowShown(vetch::LooperToken window)
{
    record.WindowShown(window);
    shown.WindowShown(window);
}

void RecordingDisplay::WindowHidden(vetch::LooperToken window)
{
    record.WindowHidden(window);
    shown.WindowHidden(window);
}

void RecordingDisplay::WindowMinimized(vetch::LooperToken window, bool minimized)
{
    record.WindowMinimized(window, minimized);
    shown.WindowMinimized(window, minimized);
}

void RecordingDisplay::WindowMoved(vetch::LooperToken window, BRect frame)
{
    record.WindowMoved(window, frame);
    shown.WindowMoved(window, frame);
}

void RecordingDisplay::WindowLimited(vetch::LooperToken window, float minWidth, float maxWidth, float minHeight,
                                     float maxHeight)
{
    record.WindowLimited(window, minWidth, maxWidth, minHeight, maxHeight);
    shown.WindowLimited(window, minWidth, maxWidth, minHeight, maxHeight);
}

void RecordingDisplay::WindowTitled(vetch::LooperToken window, const std::string& title)
{
    record.WindowTitled(window, title);
    shown.WindowTitled(window, title);
}

void RecordingDisplay::WindowFocused(vetch::LooperToken window, vetch::HandlerToken view)
{
    record.WindowFocused(window, view);
    shown.WindowFocused(window, view);
}

void RecordingDisplay::ViewMade(const vetch::ViewDescription& view)
{
    record.ViewMade(view);
    shown.ViewMade(view);
}

void RecordingDisplay::ViewMoved(vetch::HandlerToken view, BRect frame)
{
    record.ViewMoved(view, frame);
    shown.ViewMoved(view, frame);
}

void RecordingDisplay::ListItemAdded(vetch::HandlerToken list, long index, const std::string& text)
{
    record.ListItemAdded(list, index, text);
    shown.ListItemAdded(list, index, text);
}

void RecordingDisplay::ListItemRemoved(vetch::HandlerToken list, long index)
{
    record.ListItemRemoved(list, index);
    shown.ListItemRemoved(list, index);
}

void RecordingDisplay::ListItemChanged(vetch::HandlerToken list, long index, const std::string& text)
{
    record.ListItemChanged(list, index, text);
    shown.ListItemChanged(list, index, text);
}

void RecordingDisplay::ListSelected(vetch::HandlerToken list, long index)
{
    record.ListSelected(list, index);
    shown.ListSelected(list, index);
}

void RecordingDisplay::ListColoured(vetch::HandlerToken list, rgb_color selection)
{
    record.ListColoured(list, selection);
    shown.ListColoured(list, selection);
}

void RecordingDisplay::TextChanged(vetch::HandlerToken control, const std::string& text)
{
    record.TextChanged(control, text);
    shown.TextChanged(control, text);
}

void RecordingDisplay::TextSelected(vetch::HandlerToken control, long start, long end)
{
    record.TextSelected(control, start, end);
    shown.TextSelected(control, start, end);
}

void RecordingDisplay::CheckChanged(vetch::HandlerToken control, bool on)
{
    record.CheckChanged(control, on);
    shown.CheckChanged(control, on);
}

void RecordingDisplay::Beep()
{
    record.Beep();
    shown.Beep();
}

float RecordingDisplay::StringWidth(const std::string& text, float fontSize) const
{
    return shown.StringWidth(text, fontSize);
}

vetch::FontMetrics RecordingDisplay::Metrics(float fontSize) const
{
    return shown.Metrics(fontSize);
}

float RecordingDisplay::MiniScrollBarWidth() const
{
    return shown.MiniScrollBarWidth();
}

BRect RecordingDisplay::ScreenFrame(BPoint where) const
{
    return screen ? *screen : shown.ScreenFrame(where);
}

long RecordingDisplay::RunAlert(const vetch::AlertDescription& alert)
{
    const long last = static_cast<long>(alert.buttons.size()) - 1;
    const long wanted = NextOf(alertAnswers).value_or(last);
    hands.AnswerNextAlert(wanted < 0 || wanted > last ? last : wanted);
    const long answer = shown.RunAlert(alert);
    answered = true;
    log.AlertAnswered(alert, answer);
    return answer;
}

std::optional<long> RecordingDisplay::RunMenu(const vetch::MenuDescription& menu)
{
    const std::optional<long> choice = shown.RunMenu(menu);
    vetch::MenuDescription logged = menu;
    for (vetch::MenuRow& row : logged.rows)
        if (wren::KeyCode::FunctionKeyOf(row.key) != 0) { // a script's editor binds none
            row.key = 0;
            row.modifiers = 0;
        }
    log.MenuAnswered(logged, choice);
    return choice;
}

void RecordingDisplay::OpenPanel(const vetch::PanelDescription& panel)
{
    hands.AnswerNextPanel(NextOf(panelAnswers));
    log.PanelOpened(panel);
    shown.OpenPanel(panel);
}
