#include "wren/script/StateJson.h"

#include "vetch/interface/BMenu.h"
#include "vetch/interface/BMenuItem.h"
#include "vetch/support/Clock.h"
#include "wren/core/Host.h"

namespace wren {

namespace {

using vetch::HeadlessDisplay;

Json DocumentJson(const Document* document)
{
    if (document == nullptr)
        return Json();
    return {{"id", document->Id()},
            {"path", JsonText(document->Path())},
            {"text", JsonText(document->Text())},
            {"selection", Json::array({document->Selected().start, document->Selected().end})}};
}

Json ListJson(const std::optional<HeadlessDisplay::ListState>& list)
{
    if (!list)
        return Json();
    Json items = Json::array();
    for (const std::string& item : list->items)
        items.push_back(JsonText(item));
    const rgb_color colour = list->colour;
    return {{"items", items},
            {"selected", list->selected},
            {"colour", Json::array({colour.red, colour.green, colour.blue, colour.alpha})},
            {"focus", list->focus}};
}

Json ControlJson(const HeadlessDisplay::ControlState& control)
{
    using Kind = vetch::ViewDescription::Kind;
    const char* kind = control.kind == Kind::CheckBox ? "check" : control.kind == Kind::Button ? "button" : "text";
    return {{"item", control.item},
            {"kind", kind},
            {"value", control.kind == Kind::CheckBox ? Json(control.on) : JsonText(control.text)}};
}

Json WindowJson(const HeadlessDisplay::WindowState& window)
{
    Json limits = Json::array();
    for (const float limit : window.limits)
        limits.push_back(JsonNumber(limit));
    Json controls = Json::array();
    for (const HeadlessDisplay::ControlState& control : window.controls)
        controls.push_back(ControlJson(control));
    return {{"window", window.number},
            {"title", JsonText(window.title)},
            {"look", window.look},
            {"visible", window.visible},
            {"frame", JsonRect(window.frame)},
            {"limits", limits},
            {"list", ListJson(window.list)},
            {"controls", controls}};
}

Json MenuJson(const BMenu& menu)
{
    Json items = Json::array();
    for (long i = 0; i < menu.CountItems(); ++i) {
        const BMenuItem& item = *menu.ItemAt(i);
        items.push_back(Json::array(
            {JsonText(item.Label()), item.IsEnabled(), JsonKey(item.Shortcut()), item.ShortcutModifiers()}));
    }
    return items;
}

} // namespace

Json StateJson(Host& host, const std::vector<HeadlessDisplay::WindowState>& windows)
{
    Json shown = Json::array();
    for (const HeadlessDisplay::WindowState& window : windows)
        shown.push_back(WindowJson(window));
    return {{"document", DocumentJson(host.Current())},
            {"worksheet", JsonText(host.TheWorksheet().Text())},
            {"clock", system_time()},
            {"windows", shown},
            {"menu", MenuJson(*host.MenuBar().Search())}};
}

} // namespace wren
