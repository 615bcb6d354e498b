// Lines for a user's actions in the plug-in's windows.
#include "wren/script/LineHandlers.h"

#include <algorithm>

namespace wren::lines {

namespace {

using WindowState = Stage::WindowState;

// Throws LineError when no such window is visible.
long NeedWindow(ScriptSession& session, const Line& line)
{
    const long number = line.Integer("window");
    for (const WindowState& window : session.TheStage().Windows())
        if (window.number == number && window.visible)
            return number;
    throw line.Error("window", "is none that is to be seen: " + std::to_string(number));
}

void Demand(bool done, const Line& line, const char* field, const char* what)
{
    if (!done)
        throw line.Error(field, what);
}

long NumberOf(ScriptSession& session, vetch::LooperToken token)
{
    const std::vector<WindowState> windows = session.TheStage().Windows();
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [token](const WindowState& window) { return window.token == token; });
    return found == windows.end() ? 0 : found->number;
}

} // namespace

void QueueAnswer(ScriptSession& session, const Line& line, Json&)
{
    if (line.Has("alert"))
        return session.TheStage().AnswerAlert(line.Integer("alert"));
    if (!line.Has("file"))
        throw line.Error("alert", "is missing, and so is file");
    if (line.Raw("file").is_null())
        return session.TheStage().AnswerPanel(std::nullopt);
    session.TheStage().AnswerPanel(line.Text("file"));
}

void Invoke(ScriptSession& session, const Line& line, Json&)
{
    const long index = line.Integer("index");
    const long window = NeedWindow(session, line);
    Demand(session.TheStage().InvokeItem(window, index), line, "index", "is no item of that window's list");
}

void Mouse(ScriptSession& session, const Line& line, Json&)
{
    const long index = line.Integer("index");
    const long window = NeedWindow(session, line);
    Demand(session.TheStage().ClickItem(window, index), line, "index", "is no item of that window's list");
}

void Press(ScriptSession& session, const Line& line, Json&)
{
    const long item = line.Integer("item");
    const long window = NeedWindow(session, line);
    Demand(session.TheStage().Press(window, item), line, "item", "is no button of that window");
}

void Enter(ScriptSession& session, const Line& line, Json&)
{
    const long item = line.Integer("item");
    const std::string text = line.Text("text");
    const long window = NeedWindow(session, line);
    Demand(session.TheStage().Enter(window, item, text), line, "item", "is no text field of that window");
}

void Check(ScriptSession& session, const Line& line, Json&)
{
    const long item = line.Integer("item");
    const bool on = line.Flag("on");
    const long window = NeedWindow(session, line);
    Demand(session.TheStage().Check(window, item, on), line, "item", "is no check box of that window");
}

void Close(ScriptSession& session, const Line& line, Json&)
{
    const long window = NeedWindow(session, line);
    Demand(session.TheStage().Close(window), line, "window", "cannot be closed");
}

void Panel(ScriptSession& session, const Line& line, Json& answer)
{
    const std::string identifier = line.OptionalText("identifier").value_or("");
    long returned = 0;
    const vetch::LooperToken window = session.TheStage().OpenPanel(identifier, &returned);
    answer["returned"] = returned;
    answer["window"] = NumberOf(session, window);
}

} // namespace wren::lines
