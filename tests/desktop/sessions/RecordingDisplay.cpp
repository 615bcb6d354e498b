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

void RecordingDisplay::Apply(vetch::Update update)
{
    Keep(update);
    shown.Apply(std::move(update));
}

// It is the screen that activates windows and opens panels here: the record takes each window for one that never
// activates.
void RecordingDisplay::Keep(const vetch::Update& update)
{
    if (const auto* made = std::get_if<vetch::WindowMade>(&update)) {
        vetch::WindowMade silent = *made;
        silent.window.flags |= B_AVOID_FOCUS;
        record.Apply(silent);
    } else if (const auto* opened = std::get_if<vetch::PanelOpened>(&update)) {
        hands.AnswerNextPanel(NextOf(panelAnswers));
        log.PanelOpened(opened->panel);
    } else if (!std::holds_alternative<vetch::WindowActivated>(update)) {
        record.Apply(update);
    }
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
