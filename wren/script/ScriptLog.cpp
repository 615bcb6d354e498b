#include "wren/script/ScriptLog.h"

#include "base/Utf8.h"

#include <cmath>
#include <utility>

namespace wren {

Json JsonText(const std::string& text)
{
    return base::ValidUtf8(text);
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

namespace {

// The log entry of each change; nothing for one that is not logged.
Json Entry(const EventAnswered&)
{
    return Json();
}

Json Entry(const UndoBegun& undo)
{
    return Json::array({"BeginUndo", undo.before.start, undo.before.end, JsonText(undo.name)});
}

Json Entry(const TextInserted& inserted)
{
    return Json::array({"InsertText", JsonText(inserted.text), inserted.offset});
}

Json Entry(const TextDeleted& deleted)
{
    return Json::array({"DeleteText", deleted.offset, deleted.length});
}

Json Entry(const TextSelected& selected)
{
    return Json::array({"Select", selected.selection.start, selected.selection.end});
}

Json Entry(const CommandDone& done)
{
    return Json::array({"CommandDone", done.status});
}

Json Entry(const SettingRegistered& setting)
{
    return Json::array({"RegisterSetting", JsonText(setting.name)});
}

Json Entry(const CommandRegistered& command)
{
    return Json::array({"RegisterCommand", JsonText(command.name), JsonText(command.help)});
}

Json Entry(const PluginFlagsSet& set)
{
    return Json::array({"SetPluginFlags", set.flags});
}

Json Entry(const ResourceIDsSet& set)
{
    return Json::array({"SetResourceIDs", set.first, set.second});
}

Json Entry(const SettingsWritten& written)
{
    return Json::array({"WriteSettings", JsonText(written.text)});
}

Json Entry(const WorksheetAppended& appended)
{
    return Json::array({"AppendToWorksheet", JsonText(appended.text), appended.first, appended.second, appended.third});
}

Json Entry(const MenuItemAdded& item)
{
    return Json::array({"AddMenuItem", JsonText(item.menu), item.index, JsonText(item.label), JsonText(item.command),
                        JsonKey(item.key), item.modifiers});
}

Json Entry(const PreferencePanelRegistered& panel)
{
    return Json::array(
        {"RegisterPreferencePanel", JsonText(panel.identifier), JsonText(panel.title), JsonText(panel.icon)});
}

} // namespace

void ScriptLog::Changed(const HostChange& change)
{
    Json entry = std::visit([](const auto& each) { return Entry(each); }, change);
    if (!entry.is_null())
        Add(std::move(entry));
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
