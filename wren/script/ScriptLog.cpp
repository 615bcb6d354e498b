#include "wren/script/ScriptLog.h"

#include "wren/script/Utf8.h"

#include <cmath>
#include <utility>

namespace wren {

Json JsonText(const std::string& text)
{
    return ValidUtf8(text);
}

Json JsonKey(char key)
{
    return JsonText(key == 0 ? "" : std::string(1, key));
}

Json JsonNumber(float number)
{
    if (number == std::floor(number) && std::abs(number) < 1e15f)
        return static_cast<long>(number);
    return number;
}

Json JsonPoint(BPoint point)
{
    return Json::array({JsonNumber(point.x), JsonNumber(point.y)});
}

Json JsonRect(BRect rect)
{
    return Json::array({JsonNumber(rect.left), JsonNumber(rect.top), JsonNumber(rect.right), JsonNumber(rect.bottom)});
}

Json ScriptLog::Take()
{
    const std::scoped_lock lock(mutex);
    return std::exchange(entries, Json::array());
}

void ScriptLog::Add(Json entry)
{
    const std::scoped_lock lock(mutex);
    entries.push_back(std::move(entry));
}

void ScriptLog::UndoBegun(Document&, Selection before, const std::string& name)
{
    Add(Json::array({"BeginUndo", before.start, before.end, JsonText(name)}));
}

void ScriptLog::TextInserted(Document&, const std::string& text, long offset)
{
    Add(Json::array({"InsertText", JsonText(text), offset}));
}

void ScriptLog::TextDeleted(Document&, long offset, long length)
{
    Add(Json::array({"DeleteText", offset, length}));
}

void ScriptLog::Selected(Document&, Selection selection)
{
    Add(Json::array({"Select", selection.start, selection.end}));
}

void ScriptLog::CommandDone(long status)
{
    Add(Json::array({"CommandDone", status}));
}

void ScriptLog::SettingRegistered(const std::string& name)
{
    Add(Json::array({"RegisterSetting", JsonText(name)}));
}

void ScriptLog::CommandRegistered(const std::string& name, const std::string& help)
{
    Add(Json::array({"RegisterCommand", JsonText(name), JsonText(help)}));
}

void ScriptLog::PluginFlagsSet(long flags)
{
    Add(Json::array({"SetPluginFlags", flags}));
}

void ScriptLog::ResourceIDsSet(long first, long second)
{
    Add(Json::array({"SetResourceIDs", first, second}));
}

void ScriptLog::SettingsWritten(const std::string& text)
{
    Add(Json::array({"WriteSettings", JsonText(text)}));
}

void ScriptLog::AppendedToWorksheet(const std::string& text, bool first, bool second, bool third)
{
    Add(Json::array({"AppendToWorksheet", JsonText(text), first, second, third}));
}

void ScriptLog::MenuItemAdded(const std::string& menu, long index, const std::string& label, const std::string& command,
                              char key, uint32 modifiers)
{
    Add(Json::array(
        {"AddMenuItem", JsonText(menu), index, JsonText(label), JsonText(command), JsonKey(key), modifiers}));
}

void ScriptLog::PreferencePanelRegistered(const std::string& identifier, const std::string& title,
                                          const std::string& icon)
{
    Add(Json::array({"RegisterPreferencePanel", JsonText(identifier), JsonText(title), JsonText(icon)}));
}

void ScriptLog::MatchOpened(const std::string& path, long line)
{
    Add(Json::array({"open", JsonText(path), line}));
}

void ScriptLog::Beeped()
{
    Add(Json::array({"beep"}));
}

void ScriptLog::AlertAnswered(const vetch::AlertDescription& alert, long answer)
{
    Json buttons = Json::array();
    for (const std::string& button : alert.buttons)
        buttons.push_back(JsonText(button));
    Add(Json::array({"alert", JsonText(alert.title), JsonText(alert.text), buttons, answer}));
}

void ScriptLog::MenuAnswered(const vetch::MenuDescription& menu, std::optional<long> choice)
{
    Json rows = Json::array();
    for (const vetch::MenuRow& row : menu.rows)
        rows.push_back(Json::array({JsonText(row.label), row.enabled, JsonKey(row.key), row.modifiers}));
    Add(Json::array({"popup", JsonText(menu.name), rows, JsonPoint(menu.where),
                     choice ? JsonText(menu.rows[*choice].label) : Json()}));
}

void ScriptLog::PanelOpened(const vetch::PanelDescription& panel)
{
    Add(Json::array({"panel", JsonText(panel.title), JsonText(panel.directory)}));
}

void ScriptLog::WindowShown(long window)
{
    Add(Json::array({"show", window}));
}

void ScriptLog::WindowHidden(long window)
{
    Add(Json::array({"hide", window}));
}

void ScriptLog::WindowMoved(long window, BRect frame)
{
    Add(Json::array({"move", window, JsonRect(frame)}));
}

void ScriptLog::WindowClosed(long window)
{
    Add(Json::array({"close", window}));
}

} // namespace wren
